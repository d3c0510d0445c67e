#pragma once

#include <QStringList>

#include "support/Print.h"

namespace pendra {

/// Keeps the log's entries, instead of printing them, for as long as it lives. One at a time; Qt's own
/// messages still go where they went.
class [[nodiscard]] LogCapture {
 public:
  LogCapture();
  ~LogCapture();
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  /// The entries so far, oldest first, as they stand.
  [[nodiscard]] QStringList lines() const;
};

}  // namespace pendra
