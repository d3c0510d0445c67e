#pragma once

#include <QByteArray>

namespace pendra {

/// A socket path of this many bytes or more is refused.
inline constexpr qsizetype kSocketPathLimit = 104;

/// Binds a socket to a path in a folder that nobody else can write to, and makes that folder when it is
/// missing. Whatever lies at the path is removed. Answers 0 or an errno value; complaints go to standard
/// error. The process's file mask is changed for moments, so no other thread may make files meanwhile.
[[nodiscard]] int SafeBindUnixDomainSocket(int socket, const QByteArray& path);

}  // namespace pendra
