#include "NameLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include "platform/Translation.h"

namespace pendra {

namespace {

QByteArray pathOfLock(const QString& document) {
  const QFileInfo file(document);
  return QFile::encodeName(file.absolutePath() + u"/." + file.fileName() + u".lock");
}

}  // namespace

Result<bool> lockFile(int descriptor) {
  if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0) return true;
  if (errno != EWOULDBLOCK) return false;
  return Error{QStringLiteral("document"), 0, tr("another program has this document open")};
}

Result<NameLock> NameLock::take(const QString& document) {
  NameLock lock;
  lock.path_ = pathOfLock(document);
  for (;;) {
    lock.descriptor_ = ::open(lock.path_.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666);
    if (!lock.isHeld()) return lock;
    const auto locked = lockFile(lock.descriptor_);
    if (!locked) ::close(std::exchange(lock.descriptor_, -1));
    if (!locked) return locked.error();
    if (!locked.value()) lock.release();
    if (!locked.value() || lock.hasItsName()) return lock;
    ::close(std::exchange(lock.descriptor_, -1));  // whoever had it has removed it meanwhile
  }
}

bool NameLock::mayBeHeld(const QString& document) {
  return ::access(pathOfLock(document).constData(), F_OK) == 0;
}

NameLock::NameLock(NameLock&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), path_(std::move(other.path_)) {}

NameLock& NameLock::operator=(NameLock&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  std::swap(path_, other.path_);
  return *this;
}

bool NameLock::hasItsName() const {
  struct stat held {};
  struct stat named {};
  return ::fstat(descriptor_, &held) == 0 && ::stat(path_.constData(), &named) == 0 &&
         held.st_ino == named.st_ino && held.st_dev == named.st_dev;
}

void NameLock::release() {
  if (!isHeld()) return;
  if (hasItsName()) ::unlink(path_.constData());  // while it is held: afterwards it may be another's
  ::close(std::exchange(descriptor_, -1));
}

}  // namespace pendra
