#include "document/AutoSave.h"

#include "document/RunningTimers.h"
#include "document/Saving.h"
#include "document/Session.h"
#include "model/TimeEntry.h"

namespace pendra {

AutoSave::AutoSave(Session& session, SavePace pace) : session_(session), pace_(pace) {
  again_.setSingleShot(true);
  sign_.setSingleShot(true);
  QObject::connect(&periodic_, &QTimer::timeout, &periodic_, [this] { periodicSave(session_); });
  QObject::connect(&again_, &QTimer::timeout, &again_, [this] {
    const auto context = session_.context();
    if (context && session_.saveState().notSavedSince) std::ignore = context->trySave();
  });
  QObject::connect(&sign_, &QTimer::timeout, &sign_, [this] { giveFirstSign(); });
}

void AutoSave::start() {
  periodic_.start(pace_.between);
  documents_ = session_.documentChanges().observe([this] { followDocument(); });
  followDocument();
  attempts_ = session_.saveStateChanges().observe([this] { tryAgainIfNeeded(); });
  tryAgainIfNeeded();
}

void AutoSave::stop() {
  attempts_ = {};
  documents_ = {};
  edits_ = {};
  sign_.stop();
  periodic_.stop();
  again_.stop();
}

void AutoSave::tryAgainIfNeeded() {
  if (session_.saveState().notSavedSince) again_.start(pace_.untilAnotherTry);
}

void AutoSave::followDocument() {
  edits_ = {};
  if (const auto context = session_.context()) {
    edits_ = context->observe([this](const ChangeSet& news) {
      if (news.touches<TimeEntry>()) sign_.start(0);  // whoever is told of an edit does not edit
    });
  }
}

void AutoSave::giveFirstSign() {
  const DocumentSettings* settings = session_.settings();
  if (!settings) return;
  const double between = std::chrono::duration<double>(pace_.between).count();
  const auto alive = settings->aliveAt();
  if (!alive || session_.ports().clock.now() - *alive > between) giveSignOfLife(session_);
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
