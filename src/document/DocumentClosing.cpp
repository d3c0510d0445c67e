#include "document/DocumentClosing.h"

#include "document/RunningTimers.h"
#include "document/Saving.h"
#include "document/Session.h"

namespace pendra {

bool finishEditing(const Session& session) {
  for (AuxiliaryWindow* editor : {session.customerListController, session.servicesListController}) {
    if (editor && !editor->finishEditing()) return false;
  }
  return true;
}

bool mayCloseDocument(Session& session) {
  std::ignore = finishEditing(session);  // whoever could still mend a refused name has asked before
  return checkForRunningTimers(session) && saveBeforeClosing(session);
}

void leaveDocument(Session& session) {
  if (AuxiliaryWindow* setup = std::exchange(session.setupController, nullptr)) setup->close();
  if (MainWindow* window = session.window) window->close();
  session.window = nullptr;
  session.close();
}

void closeDoc(Session& session) {
  if (mayCloseDocument(session)) leaveDocument(session);
}

bool mayCloseWindow(Session& session) { return finishEditing(session) && mayCloseDocument(session); }

void closeAfterWindow(Session& session) {
  if (session.window) session.window->invalidateTracker();
  saveContextOrLog(session);
  session.window = nullptr;
  session.close();
  for (AuxiliaryWindow* list : {session.customerListController, session.servicesListController}) {
    if (list) list->close();  // it would show nothing, and keep a program without a document
  }
}

}  // namespace pendra
