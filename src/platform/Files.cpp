#include "platform/Files.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include "platform/Translation.h"

namespace pendra {

namespace {

constexpr qint64 kPiece = 1 << 16;
constexpr unsigned kUsualMode = 0644;
constexpr unsigned kModeBits = 07777;
constexpr int kMostLinks = 40;
constexpr qint64 kSecondsUntilAbandoned = 60 * 60;
const QString kDraftPrefix = QStringLiteral(".pendra-");

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

Result<void> moveInPlaceOf(const QString& from, const QString& to) {
  if (::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0) {
    return systemError(errno);
  }
  syncFolderOf(to);
  return {};
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

QString realPath(const QString& path) {
  QFileInfo file(path);
  for (int links = 0; file.isSymLink() && links < kMostLinks; ++links) file.setFile(file.symLinkTarget());
  const QString folder = QFileInfo(file.absolutePath()).canonicalFilePath();
  return folder.isEmpty() ? file.absoluteFilePath() : QDir(folder).filePath(file.fileName());
}

bool isSameFile(const QString& one, const QString& other) {
  std::error_code none;
  return std::filesystem::equivalent(QFile::encodeName(one).constData(), QFile::encodeName(other).constData(),
                                     none) ||
         QFileInfo(one).absoluteFilePath() == QFileInfo(other).absoluteFilePath();
}

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

// ---- drafts

Draft::Draft(const QString& place) : place_(realPath(place)), mode_(kUsualMode) {
  struct stat before {};
  if (::stat(QFile::encodeName(place_).constData(), &before) == 0) mode_ = before.st_mode & kModeBits;
}

Draft::~Draft() = default;

QString Draft::name() const { return file_->fileName(); }

Result<void> Draft::open() {
  const QFileInfo before(place_);
  if (before.exists() && !before.isFile() && !before.isDir()) {
    return Error{QStringLiteral("file"), 0, tr("it is not a file")};
  }
  file_ =
      std::make_unique<QTemporaryFile>(QFileInfo(place_).absolutePath() + u'/' + kDraftPrefix + u"XXXXXX");
  if (!file_->open()) return fileError(*file_);
  return {};
}

Result<void> Draft::write(QByteArrayView bytes) {
  // Not through the file object, which forgets why a write came out short.
  while (!bytes.isEmpty()) {
    const ssize_t written = ::write(file_->handle(), bytes.data(), static_cast<std::size_t>(bytes.size()));
    if (written < 0 && errno != EINTR) return systemError(errno);
    if (written > 0) bytes = bytes.sliced(written);
  }
  return {};
}

Result<void> Draft::finish(Existing existing) {
  if (::fchmod(file_->handle(), mode_) != 0 || ::fsync(file_->handle()) != 0) return systemError(errno);
  return existing == Existing::Keep ? moveToFreeName(name(), place_) : moveInPlaceOf(name(), place_);
}

bool isDraft(const QString& path) { return QFileInfo(path).fileName().startsWith(kDraftPrefix); }

void removeAbandonedDrafts(const QString& folder) {
  const QDateTime limit = QDateTime::currentDateTime().addSecs(-kSecondsUntilAbandoned);
  for (const QFileInfo& draft :
       QDir(folder).entryInfoList({kDraftPrefix + u"??????*"}, QDir::Files | QDir::Hidden)) {
    if (draft.lastModified() < limit) QFile::remove(draft.filePath());
  }
}

Result<void> writeWhole(const QString& path, QByteArrayView bytes) {
  Draft draft(path);
  if (auto opened = draft.open(); !opened) return opened;
  if (auto written = draft.write(bytes); !written) return written;
  return draft.finish(Existing::Replace);
}

namespace {

Result<void> copyBytes(QFile& from, Draft& to) {
  std::array<char, kPiece> piece;
  while (!from.atEnd()) {
    const qint64 length = from.read(piece.data(), kPiece);
    if (length < 0) return fileError(from);
    if (auto written = to.write({piece.data(), length}); !written) return written;
  }
  if (QFileInfo(to.name()).size() == from.size()) return {};
  return Error{QStringLiteral("file"), 0, tr("the copy is shorter than the file")};
}

}  // namespace

Result<void> copyFile(const QString& from, const QString& to, Existing existing,
                      const std::function<Result<void>(const QString& copy)>& isWhole) {
  QFile source(from);
  if (!QFileInfo(from).isFile() || !source.open(QIODevice::ReadOnly)) {
    return systemError(QFileInfo(from).isDir() ? EISDIR : QFileInfo::exists(from) ? EACCES : ENOENT);
  }
  Draft draft(to);
  if (auto opened = draft.open(); !opened) return opened;
  if (auto copied = copyBytes(source, draft); !copied) return copied;
  struct stat original {};
  // A copy of what may only be read may be written to.
  if (::fstat(source.handle(), &original) == 0) {
    draft.setMode((original.st_mode & kModeBits) | S_IRUSR | S_IWUSR);
  }
  if (isWhole) {
    if (auto whole = isWhole(draft.name()); !whole) return whole;
  }
  return draft.finish(existing);
}

}  // namespace pendra
