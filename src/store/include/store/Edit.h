#pragma once

#include <optional>

#include "platform/Clock.h"
#include "platform/Result.h"

namespace pendra {

/// How an edit is kept.
struct EditOptions {
  bool undoable =
      true;  ///< false for what cannot be taken back: what was sent, a list's update, a sign of life
  bool indivisible = false;  ///< true for what moves time from one object to another: half of it, taken back
                             ///< while the rest is left alone, would lose the time or have it twice
};

/// Whether an edit of any context is running or being announced. No event loop may run then: whoever shows an
/// alert, a sheet or a panel asks first.
[[nodiscard]] bool editInProgress();

/// Whether the file holds what the document holds.
struct CommitState {
  struct Failure {
    Instant since;  ///< the first attempt that failed
    Error why;      ///< of the last one
  };
  std::optional<Instant> savedAt;  ///< the last success since the file was opened
  std::optional<Failure> failure;  ///< none once an attempt has succeeded again
};

}  // namespace pendra
