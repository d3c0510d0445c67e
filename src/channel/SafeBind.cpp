#include "SafeBind.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

#include "PosixError.h"
#include "channel/SocketAddress.h"
#include "platform/Translation.h"

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

Error refusal(const char* reason, const QByteArray& path) {
  return {.domain = QStringLiteral("POSIX"),
          .code = EINVAL,
          .text = formatted(tr(reason), {QString::fromLocal8Bit(path)})};
}

Error complaint(const char* pattern, const char* reason, const QByteArray& path) {
  std::fprintf(stderr, pattern, path.constData());
  return refusal(reason, path);
}

int makeParent(const QByteArray& parent) {
  const ClearedMask mask;  // otherwise the rights would be others than those asked for below
  const int error = errnoOf(mkdir(parent.constData(), 0755));
  return error == EEXIST ? 0 : error;
}

Result<void> checkParent(const QByteArray& parent) {
  struct stat status {};
  if (const int error = errnoOf(stat(parent.constData(), &status))) return posixError(error);
  if (status.st_uid != geteuid())
    return complaint("SafeBindUnixDomainSocket: Parent (%s) is not owned by us.\n",
                     QT_TRANSLATE_NOOP("pendra", "the folder “%@” belongs to another user"), parent);
  if (!S_ISDIR(status.st_mode))
    return complaint("SafeBindUnixDomainSocket: Parent (%s) is not a directory.\n",
                     QT_TRANSLATE_NOOP("pendra", "“%@” is no folder"), parent);
  if ((status.st_mode & 0777) != 0755)
    return complaint("SafeBindUnixDomainSocket: Parent (%s) has wrong permissions.\n",
                     QT_TRANSLATE_NOOP("pendra", "the permissions of the folder “%@” are not 755"), parent);
  return {};
}

}  // namespace

Result<void> safeBind(int socket, const QByteArray& path) {
  if (path.size() >= kSocketPathLimit)
    return refusal(QT_TRANSLATE_NOOP("pendra", "the path “%@” is too long for a socket"), path);
  const char* const noFolder = QT_TRANSLATE_NOOP("pendra", "the path “%@” names no folder");
  const qsizetype parentEnd = path.lastIndexOf('/');
  if (parentEnd < 0)
    return complaint("SafeBindUnixDomainSocket: Can't get parent for path (%s).\n", noFolder, path);
  const QByteArray parent = path.left(parentEnd);
  if (!parent.contains('/'))
    return complaint("SafeBindUnixDomainSocket: Can't get grandparent for path (%s).\n", noFolder, path);
  if (const int error = makeParent(parent)) return posixError(error);
  if (auto checked = checkParent(parent); !checked) return checked;

  const ClearedMask mask;
  unlink(path.constData());
  if (const int error = errnoOf(SocketAddress::forPath(path).bind(socket))) return posixError(error);
  return {};
}

}  // namespace pendra
