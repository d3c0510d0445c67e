#include "document/Saving.h"

#include "document/Session.h"
#include "platform/Log.h"
#include "platform/Text.h"

namespace pendra {

namespace {

const QString kNoticeKey = QStringLiteral("save");

void say(Session& session, QStringView text, const QString& reason) {
  session.notices().post({.key = kNoticeKey,
                          .text = formatted(text, {session.document()->path(), reason}),
                          .actions = {},
                          .ofDocument = true});
}

}  // namespace

Result<void> saveContext(Session& session) {
  const auto context = session.context();
  return context ? context->save() : Result<void>();
}

void saveContextOrLog(Session& session) {
  if (const auto saved = saveContext(session); !saved) {
    logLine(formatted(u"PENDRA Save Error = %@", {saved.error().text}));
  }
}

void sayWhetherSaved(Session& session) {
  OpenDocument* document = session.document();
  const SaveState state = session.saveState();
  if (!document || !state.notSavedSince) {
    if (document) document->told = {};
    return session.notices().withdraw(kNoticeKey);
  }
  if (std::exchange(document->told.reason, state.reason) == state.reason) return;
  say(session, u"“%@” could not be saved: %@. It is tried again.", state.reason);
}

bool saveBeforeClosing(Session& session) {
  OpenDocument* document = session.document();
  if (!document) return true;
  saveContextOrLog(session);
  const SaveState state = session.saveState();
  if (!state.notSavedSince) return true;
  const quint64 changes = document->context()->changeCount();
  if (std::exchange(document->told.closeRefusedAt, changes) == changes) return true;
  say(session, u"“%@” stays open, because it could not be saved: %@. Close again to lose what is not stored.",
      state.reason);
  return false;
}

}  // namespace pendra
