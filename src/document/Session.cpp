#include "document/Session.h"

namespace pendra {

void Session::setContext(std::shared_ptr<ObjectContext> context) {
  const Notifier::Change change(documentChanges_);
  context_ = std::move(context);
}

void Session::setStandalone(bool standalone) {
  if (standalone == standalone_) return;
  const Notifier::Change change(standaloneChanges_);
  standalone_ = standalone;
}

void Session::clearDoc() {
  if (window) window->stopTimer();
  document_.reset();
}

void Session::setSaveState(SaveState state) {
  const Notifier::Change change(saveStateChanges_);
  saveState_ = std::move(state);
}

}  // namespace pendra
