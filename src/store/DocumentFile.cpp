#include "DocumentFile.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <array>
#include <cerrno>

#include "platform/Files.h"
#include "platform/Translation.h"
#include "store/PersistentStore.h"

namespace pendra {

namespace {

constexpr std::array<char, 16> kMagic{'S', 'Q', 'L', 'i', 't', 'e', ' ', 'f',
                                      'o', 'r', 'm', 'a', 't', ' ', '3', '\0'};
constexpr std::size_t kUserVersionAt = 60;
constexpr std::size_t kApplicationIDAt = 68;
constexpr std::size_t kHeaderSize = 100;
constexpr int kStateAt = 24;
constexpr int kStateSize = 16;
constexpr QByteArrayView kJournalMagic("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7");
constexpr qsizetype kPagesBeforeAt = 16;
constexpr qsizetype kJournalHeadSize = 28;

constexpr int kForReading = O_RDONLY | O_CLOEXEC | O_NONBLOCK;
constexpr mode_t kUsualMode = 0644;
constexpr mode_t kModeBits = 07777;
/// What a network file system calls a file that was deleted while somebody had it open.
const QString kDeletedOnNetwork = QStringLiteral(".nfs");
constexpr qint64 kPiece = 1 << 16;

QByteArray folderOf(const QString& path) { return QFile::encodeName(QFileInfo(path).absolutePath()); }

/// Whether a lock of a file would refuse every other reading and writing of it, that of the database too.
bool locksKeepTheDatabaseOut(int descriptor) {
  struct statfs place {};
  if (::fstatfs(descriptor, &place) != 0) return false;
  const auto kind = static_cast<unsigned>(place.f_type);
  return kind == CIFS_SUPER_MAGIC || kind == SMB2_SUPER_MAGIC;
}

bool isSameContent(QFile& one, QFile& other) {
  if (one.size() != other.size() || !one.seek(0)) return false;
  while (!one.atEnd()) {
    const QByteArray piece = one.read(kPiece);
    if (piece.isEmpty() || piece != other.read(kPiece)) return false;
  }
  return true;
}

Error posixError() { return systemError(errno); }

/// Whether that journal is one of a file that was empty.
bool beginsWithNothing(const QString& journal) {
  QFile file(journal);
  if (!file.open(QIODevice::ReadOnly)) return false;
  const QByteArray head = file.read(kJournalHeadSize);
  return head.size() == kJournalHeadSize && head.startsWith(kJournalMagic) &&
         qFromBigEndian<quint32>(head.constData() + kPagesBeforeAt) == 0;
}

Error notADocument(const QString& text) { return {QStringLiteral("document"), 0, text}; }

}  // namespace

DocumentFile::DocumentFile(int descriptor, const QString& path) : descriptor_(descriptor) {
  setPlace(path, {});
}

DocumentFile::DocumentFile(DocumentFile&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)),
      path_(std::move(other.path_)),
      folderDevice_(other.folderDevice_),
      isLocked_(other.isLocked_),
      lock_(std::move(other.lock_)) {}

DocumentFile& DocumentFile::operator=(DocumentFile&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  std::swap(path_, other.path_);
  std::swap(folderDevice_, other.folderDevice_);
  std::swap(isLocked_, other.isLocked_);
  std::swap(lock_, other.lock_);
  return *this;
}

DocumentFile::~DocumentFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

Result<DocumentFile> DocumentFile::ofDescriptor(int descriptor, const QString& place) {
  if (descriptor < 0) return posixError();
  DocumentFile file(descriptor, place);
  struct stat status {};
  if (::fstat(descriptor, &status) != 0) return posixError();
  if (!S_ISREG(status.st_mode)) return notADocument(tr("it is not a file"));
  return file;
}

Result<DocumentFile> DocumentFile::look(const QString& path) {
  const QString place = realPath(path);
  return ofDescriptor(::open(QFile::encodeName(place).constData(), kForReading), place);
}

Result<DocumentFile> DocumentFile::hold(const QString& path) {
  const QString place = realPath(path);
  const QByteArray name = QFile::encodeName(place);
  int descriptor = ::open(name.constData(), kForReading);
  if (descriptor < 0 && errno == ENOENT) {
    descriptor = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  }
  auto opened = ofDescriptor(descriptor, place);
  if (!opened) return opened;
  DocumentFile& file = opened.value();
  // A draft is nobody else's.
  auto lock = isDraft(place) ? Result<NameLock>(NameLock()) : NameLock::take(place);
  if (!lock) return lock.error();
  file.lock_ = std::move(lock).value();
  // The lock of the file itself as well: a program of before knows no other.
  const auto locked = locksKeepTheDatabaseOut(descriptor) ? Result<bool>(false) : lockFile(descriptor);
  if (!locked) return locked.error();
  file.isLocked_ = locked.value();
  return opened;
}

void DocumentFile::setPlace(const QString& path, NameLock lock) {
  path_ = path;
  lock_ = std::move(lock);
  struct stat folder {};
  if (::stat(folderOf(path).constData(), &folder) == 0) folderDevice_ = folder.st_dev;
}

mode_t DocumentFile::mode() const {
  struct stat status {};
  return ::fstat(descriptor_, &status) == 0 ? status.st_mode & kModeBits : kUsualMode;
}

bool DocumentFile::isWritable() const {
  return ::faccessat(AT_FDCWD, QFile::encodeName(path_).constData(), W_OK, AT_EACCESS) == 0;
}

qint64 DocumentFile::size() const {
  struct stat status {};
  return ::fstat(descriptor_, &status) == 0 ? status.st_size : -1;
}

bool DocumentFile::isEmpty() const { return size() == 0 || beginsWithNothing(journalOf(path_)); }

Result<int> DocumentFile::layout(int newest) const {
  std::array<char, kHeaderSize> header{};
  const ssize_t length = ::pread(descriptor_, header.data(), header.size(), 0);
  if (length < 0) return posixError();
  if (static_cast<std::size_t>(length) < header.size() ||
      !std::equal(kMagic.begin(), kMagic.end(), header.begin())) {
    return notADocument(tr("it is not a document of Pendra"));
  }
  if (qFromBigEndian<qint32>(header.data() + kApplicationIDAt) != kApplicationID) {
    return notADocument(tr("it is a database of another program"));
  }
  const int layout = qFromBigEndian<qint32>(header.data() + kUserVersionAt);
  if (layout > newest) return notADocument(tr("it was made by a newer version of Pendra"));
  if (layout < kFirstLayout) return notADocument(tr("its layout is unknown"));
  return layout;
}

QByteArray DocumentFile::state() const {
  QByteArray bytes(kStateSize, '\0');
  return ::pread(descriptor_, bytes.data(), kStateSize, kStateAt) == kStateSize ? bytes : QByteArray();
}

FileMark DocumentFile::mark() const {
  constexpr qint64 kNanoseconds = 1'000'000'000;
  struct stat held {};
  if (::fstat(descriptor_, &held) != 0) return {};
  return {held.st_dev, held.st_ino, held.st_size, held.st_mtim.tv_sec * kNanoseconds + held.st_mtim.tv_nsec,
          state()};
}

void DocumentFile::markStored() const {
  // A file whose time cannot be set is stored all the same.
  [[maybe_unused]] const int ignored = ::futimens(descriptor_, nullptr);
}

bool DocumentFile::isAt(const QString& path) const {
  struct stat held {};
  struct stat named {};
  return ::fstat(descriptor_, &held) == 0 && ::stat(QFile::encodeName(path).constData(), &named) == 0 &&
         held.st_ino == named.st_ino && held.st_dev == named.st_dev;
}

Whereabouts DocumentFile::whereabouts() const {
  if (isAt(path_)) return Whereabouts::InPlace;
  struct stat status {};
  if (::stat(QFile::encodeName(path_).constData(), &status) == 0) return Whereabouts::Replaced;
  if (errno != ENOENT && errno != ENOTDIR) return Whereabouts::OutOfReach;
  const QString moved = movedTo();
  const bool isDeleted = (::fstat(descriptor_, &status) == 0 && status.st_nlink == 0) ||
                         QFileInfo(moved).fileName().startsWith(kDeletedOnNetwork);
  if (!isDeleted) return moved.isEmpty() ? Whereabouts::OutOfReach : Whereabouts::Moved;
  const bool isOldFolder =
      ::stat(folderOf(path_).constData(), &status) == 0 && status.st_dev == folderDevice_;
  return isOldFolder ? Whereabouts::Deleted : Whereabouts::OutOfReach;
}

QString DocumentFile::movedTo() const {
  const QString link = u"/proc/self/fd/" + QString::number(descriptor_);
  const QString path = QFileInfo(link).symLinkTarget();
  return isAt(path) ? path : QString();
}

Result<void> DocumentFile::takeOver() {
  QFile held;
  QFile other(path_);
  if (!held.open(::dup(descriptor_), QIODevice::ReadOnly, QFileDevice::AutoCloseHandle) ||
      !other.open(QIODevice::ReadOnly)) {
    return systemError(EIO);
  }
  if (QFileInfo::exists(journalOf(path_)) || !isSameContent(held, other)) {
    return notADocument(tr("it is another version"));
  }
  const int descriptor = ::fcntl(other.handle(), F_DUPFD_CLOEXEC, 0);
  if (descriptor < 0) return posixError();
  const auto locked = lockFile(descriptor);
  if (locked) isLocked_ = locked.value();
  ::close(locked ? std::exchange(descriptor_, descriptor) : descriptor);
  if (!locked) return locked.error();
  return {};
}

}  // namespace pendra
