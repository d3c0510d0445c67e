#pragma once

#include <functional>
#include <vector>

#include "document/HaltedEntries.h"
#include "ui_core/EntryQuestion.h"

namespace pendra {

class Session;

/// Says in the notice line what was being timed when the program ended without stopping it, and offers to
/// give it the length up to the last save, to type the length of a single one, or to let it run on.
class HaltedNotice {
 public:
  /// `edit` opens the editor of an entry.
  HaltedNotice(Session& session, std::function<void(TimeEntry&)> edit);

 private:
  [[nodiscard]] EntryQuestion::Question ask() const;
  [[nodiscard]] std::vector<NoticeAction> actionsFor(const HaltedEntries& halted) const;

  Session& session_;
  std::function<void(TimeEntry&)> edit_;
  EntryQuestion question_;
};

}  // namespace pendra
