#include "channel/SafeBindUnixDomainSocket.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "channel/IPCAddress.h"
#include "channel/MoreUNIXErrno.h"

namespace pendra {
namespace {

/// Clears the process's file mask for its own life time.
class ClearedMask {
 public:
  ClearedMask() : previous_(umask(0)) {}
  ~ClearedMask() { umask(previous_); }
  Q_DISABLE_COPY_MOVE(ClearedMask)

 private:
  mode_t previous_;
};

int complain(const char* pattern, const QByteArray& path) {
  std::fprintf(stderr, pattern, path.constData());
  return EINVAL;
}

int makeParent(const QByteArray& parent) {
  const ClearedMask mask;  // otherwise the rights would be others than those asked for below
  const int error = MoreUNIXErrno(mkdir(parent.constData(), 0755));
  return error == EEXIST ? 0 : error;
}

int checkParent(const QByteArray& parent) {
  struct stat status {};
  if (const int error = MoreUNIXErrno(stat(parent.constData(), &status))) return error;
  if (status.st_uid != geteuid())
    return complain("SafeBindUnixDomainSocket: Parent (%s) is not owned by us.\n", parent);
  if (!S_ISDIR(status.st_mode))
    return complain("SafeBindUnixDomainSocket: Parent (%s) is not a directory.\n", parent);
  if ((status.st_mode & 0777) != 0755)
    return complain("SafeBindUnixDomainSocket: Parent (%s) has wrong permissions.\n", parent);
  return 0;
}

}  // namespace

int SafeBindUnixDomainSocket(int socket, const QByteArray& path) {
  if (path.size() >= kSocketPathLimit) return EINVAL;
  const qsizetype parentEnd = path.lastIndexOf('/');
  if (parentEnd < 0) return complain("SafeBindUnixDomainSocket: Can't get parent for path (%s).\n", path);
  const QByteArray parent = path.left(parentEnd);
  if (!parent.contains('/'))
    return complain("SafeBindUnixDomainSocket: Can't get grandparent for path (%s).\n", path);
  if (const int error = makeParent(parent)) return error;
  if (const int error = checkParent(parent)) return error;

  const ClearedMask mask;
  unlink(path.constData());
  return MoreUNIXErrno(IPCAddress::forPath(path).bind(socket));
}

}  // namespace pendra
