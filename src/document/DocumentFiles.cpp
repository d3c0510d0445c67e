#include "document/DocumentFiles.h"

#include <QDir>
#include <QFileInfo>

#include "platform/Files.h"

namespace pendra {

QString documentFolder(const Places& places) { return places.documents + u"/Pendra"; }

QString untitledPath(const Places& places) {
  return firstFreePath(places.documents + u"/Untitled", QStringLiteral("pdr"));
}

QString movedFromOlderName(const QString& path) {
  if (!path.endsWith(u".xml")) return path;
  // Kept: every ".xml" of the path is replaced, a folder's too; the move then fails and the path stays.
  const QString renamed = QString(path).replace(QStringLiteral(".xml"), QStringLiteral(".pdr"));
  return moveToFreeName(path, renamed) ? renamed : path;
}

}  // namespace pendra
