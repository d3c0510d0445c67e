#pragma once

#include <QByteArray>

#include "platform/Result.h"

namespace pendra {

/// Binds a socket to a path in a folder that nobody else can write to, and makes that folder when it is
/// missing. Whatever lies at the path is removed. The error is of the POSIX domain and says in its text what
/// a person can mend; complaints also go to standard error. The process's file mask is changed for moments,
/// so no other thread may make files meanwhile.
Result<void> safeBind(int socket, const QByteArray& path);

}  // namespace pendra
