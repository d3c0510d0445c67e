#include "document/Saving.h"

#include "document/Session.h"
#include "platform/Log.h"
#include "platform/Text.h"

namespace pendra {

namespace {

const QString kNoticeKey = QStringLiteral("save");

/// Says once why saving fails, not again at every try.
void sayWhetherSaved(Session& session, const SaveState& before, const SaveState& now) {
  if (!now.notSavedSince) return session.notices().withdraw(kNoticeKey);
  if (before.notSavedSince && before.reason == now.reason) return;
  const CorvelFileDoc* document = session.theFileDoc();
  const QString path = document ? document->fileURL().value_or(document->displayName()) : QString();
  session.notices().post(
      {.key = kNoticeKey,
       .text = formatted(u"“%@” could not be saved: %@. It is tried again.", {path, now.reason}),
       .actions = {}});
}

}  // namespace

Result<void> saveContext(Session& session) {
  if (!session.myContext()) return {};
  const auto saved = session.myContext()->save();
  const Instant now = session.ports().clock.now();
  const SaveState before = session.saveState();
  SaveState state = before;
  if (saved) {
    state = {.savedAt = now, .notSavedSince = {}, .reason = {}};
  } else {
    if (!state.notSavedSince) state.notSavedSince = state.savedAt.value_or(now);
    state.reason = saved.error().text;
  }
  session.setSaveState(state);
  sayWhetherSaved(session, before, state);
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
