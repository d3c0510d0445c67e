#include "document/DocumentFiles.h"

#include <fcntl.h>
#include <stdio.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>

namespace pendra {

namespace {

/// Moves a file to a name that must be free; unlike a plain rename it never replaces what stands there.
bool moveToFreeName(const QString& from, const QString& to) {
  const QByteArray source = QFile::encodeName(from);
  const QByteArray target = QFile::encodeName(to);
  if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0)
    return true;
  // Not every file system knows that flag; a second name is refused all the same when it is taken.
  if (errno != EINVAL && errno != ENOSYS) return false;
  return ::link(source.constData(), target.constData()) == 0 && ::unlink(source.constData()) == 0;
}

}  // namespace

QString applicationSupportFolder(const Places& places) { return places.documents + u"/Pendra"; }

QString cacheURL(const Places& places) {
  const QString folder = applicationSupportFolder(places);
  QDir().mkpath(folder);
  return folder + u"/Pendra File.pdr";
}

QString firstFreePath(const QString& base, const QString& extension) {
  QString path = base + u'.' + extension;
  for (int number = 1; QFileInfo::exists(path); ++number) {
    path = base + QString::number(number) + u'.' + extension;
  }
  return path;
}

QString tempURL(const Places& places) {
  return firstFreePath(places.documents + u"/Untitled", QStringLiteral("pdr"));
}

QString changeXMLtoPDR(const QString& path) {
  if (!path.endsWith(u".xml")) return path;
  // Kept: every ".xml" of the path is replaced, a folder's too; the move then fails and the path stays.
  const QString renamed = QString(path).replace(QStringLiteral(".xml"), QStringLiteral(".pdr"));
  return moveToFreeName(path, renamed) ? renamed : path;
}

}  // namespace pendra
