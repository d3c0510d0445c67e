#include "platform/Files.h"

#include <fcntl.h>
#include <stdio.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>

namespace pendra {

namespace {

constexpr qint64 kPiece = 1 << 16;

Error fileError(const QFileDevice& file) {
  return {QStringLiteral("file"), file.error(), file.errorString()};
}

/// Brings a folder's names to the disk. What cannot be brought there is there all the same.
void syncFolderOf(const QString& path) {
  const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
  const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  ::fsync(descriptor);
  ::close(descriptor);
}

/// Writes all of it. Not through the file object, which forgets why a write came out short.
Result<void> writeBytes(int descriptor, const char* bytes, qint64 length) {
  while (length > 0) {
    const ssize_t written = ::write(descriptor, bytes, static_cast<std::size_t>(length));
    if (written < 0 && errno != EINTR) return systemError(errno);
    if (written < 0) continue;
    bytes += written;
    length -= written;
  }
  return {};
}

Result<void> copyBytes(QFile& from, QFile& to) {
  std::array<char, kPiece> piece;
  while (!from.atEnd()) {
    const qint64 length = from.read(piece.data(), kPiece);
    if (length < 0) return fileError(from);
    if (auto written = writeBytes(to.handle(), piece.data(), length); !written) return written;
  }
  if (::fsync(to.handle()) != 0) return systemError(errno);
  if (to.size() == from.size()) return {};
  return Error{QStringLiteral("file"), 0, QStringLiteral("the copy is shorter than the file")};
}

}  // namespace

Error systemError(int code) {
  return {QStringLiteral("POSIX"), code, QString::fromLocal8Bit(std::strerror(code))};
}

QString firstFreePath(const QString& base, const QString& extension) {
  QString path = base + u'.' + extension;
  for (int number = 1; QFileInfo::exists(path); ++number) {
    path = base + QString::number(number) + u'.' + extension;
  }
  return path;
}

Result<void> moveInPlaceOf(const QString& from, const QString& to) {
  if (::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0) {
    return systemError(errno);
  }
  syncFolderOf(to);
  return {};
}

bool isSameFile(const QString& one, const QString& other) {
  std::error_code none;
  return std::filesystem::equivalent(QFile::encodeName(one).constData(), QFile::encodeName(other).constData(),
                                     none) ||
         QFileInfo(one).absoluteFilePath() == QFileInfo(other).absoluteFilePath();
}

QString draftFor(const QString& path) { return QFileInfo(path).absolutePath() + u"/.pendra-XXXXXX"; }

Result<void> moveToFreeName(const QString& from, const QString& to) {
  const QByteArray source = QFile::encodeName(from);
  const QByteArray target = QFile::encodeName(to);
  if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0) {
    syncFolderOf(to);
    return {};
  }
  if (errno != EINVAL && errno != ENOSYS) return systemError(errno);
  // Not every file system knows that flag, nor second names.
  if (QFileInfo::exists(to)) return systemError(EEXIST);
  return moveInPlaceOf(from, to);
}

Result<void> copyFile(const QString& from, const QString& to, Existing existing,
                      const std::function<Result<void>(const QString& copy)>& isWhole) {
  QFile source(from);
  if (!QFileInfo(from).isFile() || !source.open(QIODevice::ReadOnly)) {
    return systemError(QFileInfo(from).isDir() ? EISDIR : QFileInfo::exists(from) ? EACCES : ENOENT);
  }
  QTemporaryFile draft(draftFor(to));
  if (!draft.open()) return fileError(draft);
  if (auto copied = copyBytes(source, draft); !copied) return copied;
  draft.setPermissions(source.permissions() | QFileDevice::ReadOwner | QFileDevice::WriteOwner);
  const QString name = draft.fileName();
  if (isWhole) {
    if (auto whole = isWhole(name); !whole) return whole;
  }
  return existing == Existing::Keep ? moveToFreeName(name, to) : moveInPlaceOf(name, to);
}

}  // namespace pendra
