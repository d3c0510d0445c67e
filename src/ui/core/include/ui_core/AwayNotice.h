#pragma once

#include <functional>

#include "document/TimeAway.h"
#include "ui_core/EntryQuestion.h"

namespace pendra {

/// Asks in the notice line whether the time counts in which nobody was there while entries ran.
class AwayNotice {
 public:
  /// `decide` shows all the ways to answer.
  AwayNotice(Session& session, std::function<void()> decide);

 private:
  [[nodiscard]] EntryQuestion::Question ask() const;

  Session& session_;
  std::function<void()> decide_;
  EntryQuestion question_;
};

/// "37 minutes", "1 hour 5 minutes".
[[nodiscard]] QString awayLength(double seconds);
/// "37 min away?" for an entry that waits for an answer; empty for any other.
[[nodiscard]] QString awayMark(const TimeEntry& entry);
/// What runs through an absence: "“Acme - Build”", or "2 activities".
[[nodiscard]] QString whatRan(const TimeAway& away);

}  // namespace pendra
