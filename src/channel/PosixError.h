#pragma once

#include <cerrno>
#include <cstring>

#include "platform/Result.h"
#include "platform/Text.h"

namespace pendra {

/// The errno value of a system call's result: 0 when the result is not negative.
[[nodiscard]] inline int errnoOf(int result) { return result < 0 ? errno : 0; }

/// An error of the POSIX domain.
inline Error posixError(int code) {
  return {
      .domain = QStringLiteral("POSIX"), .code = code, .text = QString::fromLocal8Bit(std::strerror(code))};
}

/// An error as it stands in a log line or reason.
inline QString described(const Error& error) {
  return formatted(u"%@ (%@ %@)", {error.text, error.domain, QString::number(error.code)});
}

}  // namespace pendra
