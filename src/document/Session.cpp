#include "document/Session.h"

#include "document/Saving.h"
#include "platform/Preferences.h"

namespace pendra {

Session::Session(const Ports& ports, ObjectModel model)
    : ports_(ports),
      objectModel_(std::move(model)),
      settings_(ports_.defaults.failureChanges().observe([this] { sayWhetherSettingsAreStored(*this); })),
      oneAtATime_(ports_.defaults.changesOf(preferences::kOneAtATime.key).observe([this] {
        if (document_) obeyPreferences();
      })) {}

void Session::open(std::unique_ptr<OpenDocument> document) { exchange(std::move(document)); }

void Session::close() {
  if (document_) exchange(nullptr);
}

void Session::requireEdits() {
  editsRequired_ = true;
  if (document_) context()->requireEdits(true);
}

void Session::exchange(std::unique_ptr<OpenDocument> next) {
  if (document_) documentLeaving_.changed();
  const bool wasStandalone = isStandalone();
  // From here on `next` is the one before: it stands until nobody shows it any more.
  std::swap(document_, next);
  commits_ = {};
  if (document_) {
    context()->requireEdits(editsRequired_);
    obeyPreferences();
    commits_ = context()->observeCommits([this](const CommitState&) { commitTried(); });
  }
  notices_.withdrawOfDocument();
  documentChanges_.changed();
  if (isStandalone() != wasStandalone) standaloneChanges_.changed();
  if (document_) sayHowFileIsHeld(*this);
  commitTried();  // the reading may have been one that could not store what it did
}

void Session::obeyPreferences() {
  document_->settings().setStartsOneAtATime(preferences::kOneAtATime.isOn(ports_.defaults));
}

void Session::commitTried() {
  sayWhetherSaved(*this);
  saveStateChanges_.changed();
}

SaveState Session::saveState() const {
  if (!document_) return {};
  const CommitState& commits = document_->context()->commitState();
  const Instant savedAt = commits.savedAt.value_or(document_->openedAt());
  if (!commits.failure) return {.savedAt = savedAt};
  return {.savedAt = savedAt, .notSavedSince = savedAt, .reason = commits.failure->why.text};
}

}  // namespace pendra
