#include "DocumentFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QtEndian>
#include <array>
#include <cerrno>

#include "platform/Files.h"
#include "store/PersistentStore.h"

namespace pendra {

namespace {

constexpr std::array<char, 16> kMagic{'S', 'Q', 'L', 'i', 't', 'e', ' ', 'f',
                                      'o', 'r', 'm', 'a', 't', ' ', '3', '\0'};
constexpr std::size_t kUserVersionAt = 60;
constexpr std::size_t kApplicationIDAt = 68;
constexpr std::size_t kHeaderSize = 100;
constexpr QByteArrayView kJournalMagic("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7");
constexpr qsizetype kPagesBeforeAt = 16;
constexpr qsizetype kJournalHeadSize = 28;

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

DocumentFile::DocumentFile(int descriptor, QString path) : descriptor_(descriptor), path_(std::move(path)) {}
DocumentFile::DocumentFile(DocumentFile&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), path_(std::move(other.path_)) {}
DocumentFile::~DocumentFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

Result<DocumentFile> DocumentFile::hold(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  int descriptor = ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0 && errno == ENOENT) {
    descriptor = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  }
  if (descriptor < 0) return posixError();
  DocumentFile file(descriptor, path);
  struct stat status {};
  if (::fstat(descriptor, &status) != 0) return posixError();
  if (!S_ISREG(status.st_mode)) return notADocument(QStringLiteral("it is not a file"));
  if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
    return errno == EWOULDBLOCK ? notADocument(QStringLiteral("another program has this document open"))
                                : posixError();
  }
  return file;
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
    return notADocument(QStringLiteral("it is not a document of Pendra"));
  }
  if (qFromBigEndian<qint32>(header.data() + kApplicationIDAt) != kApplicationID) {
    return notADocument(QStringLiteral("it is a database of another program"));
  }
  const int layout = qFromBigEndian<qint32>(header.data() + kUserVersionAt);
  if (layout > newest) return notADocument(QStringLiteral("it was made by a newer version of Pendra"));
  if (layout < kFirstLayout) return notADocument(QStringLiteral("its layout is unknown"));
  return layout;
}

void DocumentFile::markStored() const {
  // A file whose time cannot be set is stored all the same.
  [[maybe_unused]] const int ignored = ::futimens(descriptor_, nullptr);
}

Result<bool> DocumentFile::isStillThere() const {
  struct stat held {};
  struct stat named {};
  if (::fstat(descriptor_, &held) != 0) return posixError();
  if (::stat(QFile::encodeName(path_).constData(), &named) != 0) {
    if (errno == ENOENT) return false;
    return posixError();
  }
  if (held.st_ino == named.st_ino && held.st_dev == named.st_dev) return true;
  return notADocument(QStringLiteral("another file has taken its place"));
}

}  // namespace pendra
