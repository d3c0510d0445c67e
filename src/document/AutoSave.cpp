#include "document/AutoSave.h"

#include "document/RunningTimers.h"
#include "document/Saving.h"
#include "document/Session.h"

namespace pendra {

AutoSave::AutoSave(Session& session, SavePace pace) : session_(session), pace_(pace) {
  again_.setSingleShot(true);
  QObject::connect(&periodic_, &QTimer::timeout, &periodic_, [this] { periodicSave(session_); });
  QObject::connect(&again_, &QTimer::timeout, &again_, [this] {
    const auto context = session_.context();
    if (context && session_.saveState().notSavedSince) std::ignore = context->trySave();
  });
}

void AutoSave::start() {
  periodic_.start(pace_.between);
  attempts_ = session_.saveStateChanges().observe([this] { tryAgainIfNeeded(); });
  tryAgainIfNeeded();
}

void AutoSave::stop() {
  attempts_ = {};
  periodic_.stop();
  again_.stop();
}

void AutoSave::tryAgainIfNeeded() {
  if (session_.saveState().notSavedSince) again_.start(pace_.untilAnotherTry);
}

void giveSignOfLife(Session& session) {
  const auto context = session.context();
  if (!context || !isTimeRunning(*context)) return;
  [[maybe_unused]] const auto done = context->edit(
      QString(), {.undoable = false}, [&] { session.settings()->setAliveAt(session.ports().clock.now()); });
}

void periodicSave(Session& session) {
  giveSignOfLife(session);
  saveContextOrLog(session);
}

}  // namespace pendra
