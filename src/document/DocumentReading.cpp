#include "DocumentReading.h"

#include <QFileInfo>

#include "document/CorvelDocController.h"
#include "document/DocumentClosing.h"
#include "document/DocumentLoading.h"
#include "document/RunningTimers.h"
#include "document/Session.h"
#include "platform/Text.h"

namespace pendra {

namespace {

const QString kNoticeKey = QStringLiteral("document");

void sayUnreadable(Session& session, const QString& path, const Error& error) {
  session.setSaveState({.notSavedSince = session.ports().clock.now(), .reason = error.text});
  session.notices().post(
      {.key = kNoticeKey,
       .text = formatted(u"“%@” could not be opened: %@.", {QFileInfo(path).fileName(), error.text}),
       .actions = {}});
}

}  // namespace

std::shared_ptr<CorvelFileDoc> makeDocument(Session& session) {
  const Ports& ports = session.ports();
  return std::make_shared<CorvelFileDoc>(
      std::make_shared<ObjectContext>(session.managedObjectModel(), ports.clock, ports.calendar));
}

bool readDocument(Session& session, const std::shared_ptr<CorvelFileDoc>& document, const QString& path,
                  const std::optional<QString>& ofType) {
  const auto lastSave = timeOfLastSave(path);
  const auto read = document->readFromURL(path, ofType);
  session.setTheFileDoc(document);
  if (getLastOpenURL(session) != path) session.notices().withdrawOfDocument();
  setLastOpenURL(session, path);
  session.setMyContext(document->managedObjectContext());
  checkStandalone(session);
  if (!read) {
    sayUnreadable(session, path, read.error());  // in the setup window too, which therefore stays
    return false;
  }
  if (session.setupController) {
    closeDoc(session);
    session.setTheFileDoc(document);
  }
  session.notices().withdraw(kNoticeKey);
  session.setSaveState({.savedAt = session.ports().clock.now()});
  session.setMyContext(document->managedObjectContext());
  session.halted = haltedEntries(*session.myContext(), lastSave);
  haltAnyRunningPeriods(session);
  noteRecentDocument(session, path);
  return true;
}

}  // namespace pendra
