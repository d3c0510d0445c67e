#include "channel/MoreUNIXErrno.h"

#include <QtGlobal>
#include <cerrno>

namespace pendra {

int MoreUNIXErrno(int result) {
  if (result >= 0) return 0;
  const int error = errno;
  if (error == 0) qFatal("MoreUNIXErrno: a call failed and left no errno");
  return error;
}

}  // namespace pendra
