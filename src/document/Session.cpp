#include "document/Session.h"

namespace pendra {

void Session::setMyContext(std::shared_ptr<ObjectContext> context) {
  const Notifier::Change change(myContextChanges_);
  myContext_ = std::move(context);
}

void Session::setMyStandalone(bool standalone) {
  if (standalone == myStandalone_) return;
  const Notifier::Change change(myStandaloneChanges_);
  myStandalone_ = standalone;
}

void Session::clearDoc() {
  if (window) window->stopTimer();
  theFileDoc_.reset();
}

void Session::setSaveState(SaveState state) {
  const Notifier::Change change(saveStateChanges_);
  saveState_ = std::move(state);
}

}  // namespace pendra
