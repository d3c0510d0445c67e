#include "ui_core/DocumentState.h"

#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

QString documentStateText(const SaveState& state, const Calendar& calendar) {
  const auto clock = [&](Instant instant) {
    return calendar.local(instant).toString(QStringLiteral("HH:mm"));
  };
  if (state.notSavedSince) {
    return formatted(tr("Not saved since %@: %@"), {clock(*state.notSavedSince), state.reason});
  }
  return state.savedAt ? formatted(tr("Saved %@"), {clock(*state.savedAt)}) : QString();
}

}  // namespace pendra
