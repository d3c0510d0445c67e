#include "support/Disk.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>

namespace {
pendra::Disk* disk = nullptr;
}

// The system's own functions, which everything in a test's program finds here first.
extern "C" {

int flock(int descriptor, int operation) noexcept {
  using Locks = pendra::Disk::Locks;
  const bool isForReading = (::fcntl(descriptor, F_GETFL) & O_ACCMODE) == O_RDONLY;
  if (disk && (disk->locks == Locks::None || (disk->locks == Locks::OnlyOfFilesToWrite && isForReading))) {
    errno = EBADF;
    return -1;
  }
  return static_cast<int>(::syscall(SYS_flock, descriptor, operation));
}

int fsync(int descriptor) {
  if (disk && --disk->syncs < 0) {
    errno = EIO;
    return -1;
  }
  if (disk) disk->synced << QFile::symLinkTarget(QStringLiteral("/proc/self/fd/%1").arg(descriptor));
  return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

int fdatasync(int descriptor) { return fsync(descriptor); }

int fstatfs(int descriptor, struct statfs* place) noexcept {
  const int done = static_cast<int>(::syscall(SYS_fstatfs, descriptor, place));
  if (disk && disk->locksRefuseOthers) place->f_type = SMB2_SUPER_MAGIC;
  return done;
}

int stat(const char* path, struct stat* status) noexcept {
  const int done = ::fstatat(AT_FDCWD, path, status, 0);
  if (done == 0 && disk && disk->isAnother) status->st_dev += 1;
  return done;
}
}

namespace pendra {

Disk::Disk() { disk = this; }
Disk::~Disk() { disk = nullptr; }

}  // namespace pendra
