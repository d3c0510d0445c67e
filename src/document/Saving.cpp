#include "document/Saving.h"

#include "document/Session.h"
#include "platform/Log.h"
#include "platform/Text.h"

namespace pendra {

Result<void> saveContext(Session& session) {
  if (!session.myContext()) return {};
  const auto saved = session.myContext()->save();
  const Instant now = session.ports().clock.now();
  SaveState state = session.saveState();
  if (saved) {
    state = {.savedAt = now, .notSavedSince = {}, .reason = {}};
  } else {
    if (!state.notSavedSince) state.notSavedSince = state.savedAt.value_or(now);
    state.reason = saved.error().text;
  }
  session.setSaveState(std::move(state));
  return saved;
}

void saveContextOrLog(Session& session) {
  if (const auto saved = saveContext(session); !saved) {
    logLine(formatted(u"PENDRA Save Error = %@", {saved.error().text}));
  }
}

void saveAction(Session& session) {
  saveContextOrLog(session);
  if (CorvelFileDoc* document = session.theFileDoc()) document->save();
}

}  // namespace pendra
