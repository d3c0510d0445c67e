#include "document/DocumentClosing.h"

#include "document/RunningTimers.h"
#include "document/Saving.h"
#include "document/Session.h"

namespace pendra {

bool finishEditing(const Session& session) { return session.ports().windows.finishEditing(); }

bool mayCloseDocument(Session& session) {
  std::ignore = finishEditing(session);  // whoever could still mend a refused name has asked before
  return checkForRunningTimers(session) && saveBeforeClosing(session);
}

void leaveDocument(Session& session) {
  session.ports().windows.close(WindowKind::Setup);
  session.ports().windows.close(WindowKind::Timer);
  session.close();
}

void closeDoc(Session& session) {
  if (mayCloseDocument(session)) leaveDocument(session);
}

bool mayCloseWindow(Session& session) { return finishEditing(session) && mayCloseDocument(session); }

void closeAfterWindow(Session& session) {
  saveContextOrLog(session);
  session.close();
  // A list would show nothing now, and keep a program without a document.
  session.ports().windows.close(WindowKind::CustomerList);
  session.ports().windows.close(WindowKind::ServicesList);
}

}  // namespace pendra
