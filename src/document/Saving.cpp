#include "document/Saving.h"

#include "document/Session.h"
#include "platform/Log.h"
#include "platform/Text.h"

namespace pendra {

namespace {

const QString kNoticeKey = QStringLiteral("save");

QString pathOf(const Session& session) {
  const OpenDocument* document = session.document();
  return document ? document->path().value_or(document->displayName()) : QString();
}

void say(Session& session, QStringView text, const QString& reason) {
  session.notices().post(
      {.key = kNoticeKey, .text = formatted(text, {pathOf(session), reason}), .actions = {}});
}

/// Says once why saving fails, not again at every try.
void sayWhetherSaved(Session& session, const SaveState& before, const SaveState& now) {
  if (!now.notSavedSince) return session.notices().withdraw(kNoticeKey);
  if (before.notSavedSince && before.reason == now.reason) return;
  say(session, u"“%@” could not be saved: %@. It is tried again.", now.reason);
}

}  // namespace

Result<void> saveContext(Session& session) {
  if (!session.context()) return {};
  auto saved = session.context()->save();
  const Instant now = session.ports().clock.now();
  const SaveState before = session.saveState();
  SaveState state = before;
  if (saved) {
    state = {.savedAt = now};
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

bool saveBeforeClosing(Session& session) {
  const auto context = session.context();
  if (!context || !session.window) return true;
  saveContextOrLog(session);
  SaveState state = session.saveState();
  const quint64 changes = context->changeCount();
  if (!state.notSavedSince || std::exchange(state.closeRefusedAt, changes) == changes) return true;
  session.setSaveState(state);
  say(session, u"“%@” stays open, because it could not be saved: %@. Close again to lose what is not stored.",
      state.reason);
  return false;
}

void saveAction(Session& session) {
  saveContextOrLog(session);
  if (OpenDocument* document = session.document()) document->save();
}

}  // namespace pendra
