#pragma once
// Three operations check the same fields in three orders, and the order is what a person notices: the first
// row that fails shows its text, and nothing else happens. So each order is a table of its own.

#include <span>

#include "platform/Alerts.h"
#include "ui_core/EntryTexts.h"

namespace pendra {

/// One row: what must not be the case, and what is said when it is. An empty text stops without a word.
struct EntryCheck {
  bool (*fails)(const EntryTexts& texts);
  const char* message;  ///< its English; empty to refuse without a word
};

/// What the activity editor asks before its OK.
[[nodiscard]] std::span<const EntryCheck> activitySaveChecks();
/// What the activity editor asks before it changes the selected entry.
[[nodiscard]] std::span<const EntryCheck> selectedEntryChecks();
/// What the time entry editor asks before its OK.
[[nodiscard]] std::span<const EntryCheck> timeEntryChecks();

/// The first row that fails; none when all pass.
[[nodiscard]] const EntryCheck* firstFailing(std::span<const EntryCheck> checks, const EntryTexts& texts);
/// Whether all pass; shows the text of the first that does not, as a sheet.
[[nodiscard]] bool passes(std::span<const EntryCheck> checks, const EntryTexts& texts, Alerts& alerts);

}  // namespace pendra
