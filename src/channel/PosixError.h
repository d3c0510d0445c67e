#pragma once

#include <cstring>

#include "platform/Result.h"
#include "platform/Text.h"

namespace pendra {

/// An error of the POSIX domain.
inline Error posixError(int code) {
  return {
      .domain = QStringLiteral("POSIX"), .code = code, .text = QString::fromLocal8Bit(std::strerror(code))};
}

/// An error as it stands in a log line or reason.
inline QString described(const Error& error) {
  if (error.code == 0) return error.text;
  return formatted(u"%@ (%@ %@)", {error.text, error.domain, QString::number(error.code)});
}

}  // namespace pendra
