#include "document/DocumentClosing.h"

#include "document/RunningTimers.h"
#include "document/Saving.h"
#include "document/Session.h"

namespace pendra {

namespace {

void forgetDocument(Session& session) {
  session.setContext(nullptr);
  session.setSettings(nullptr);
}

}  // namespace

bool finishEditing(const Session& session) {
  for (AuxiliaryWindow* editor : {session.customerListController, session.servicesListController}) {
    if (editor && !editor->finishEditing()) return false;
  }
  return true;
}

void closeDoc(Session& session) {
  if (session.settings()) session.setStandalone(session.settings()->standalone().value_or(false));
  std::ignore = finishEditing(session);  // whoever could still mend a refused name has asked before
  if (!checkForRunningTimers(session) || !saveBeforeClosing(session)) return;
  if (AuxiliaryWindow* setup = std::exchange(session.setupController, nullptr)) setup->close();
  if (MainWindow* window = session.window) {
    saveAction(session);
    session.clearDoc();
    window->close();
    session.window = nullptr;
  }
  forgetDocument(session);
}

bool mayCloseWindow(Session& session) {
  return finishEditing(session) && checkForRunningTimers(session) && saveBeforeClosing(session);
}

void closeAfterWindow(Session& session) {
  if (session.window) session.window->invalidateTracker();
  saveAction(session);
  session.clearDoc();
  session.window = nullptr;
  forgetDocument(session);
}

}  // namespace pendra
