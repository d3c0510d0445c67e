#include "DocumentReading.h"

#include <QFileInfo>

#include "document/DocumentClosing.h"
#include "document/DocumentLoading.h"
#include "document/Documents.h"
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

std::shared_ptr<OpenDocument> makeDocument(Session& session) {
  const Ports& ports = session.ports();
  return std::make_shared<OpenDocument>(
      std::make_shared<ObjectContext>(session.objectModel(), ports.clock, ports.calendar));
}

bool readDocument(Session& session, const std::shared_ptr<OpenDocument>& document, const QString& path) {
  const auto lastSave = timeOfLastSave(path);
  const auto read = document->read(path);
  session.setDocument(document);
  if (lastDocumentPath(session) != path) session.notices().withdrawOfDocument();
  setLastDocumentPath(session, path);
  session.setContext(document->context());
  checkStandalone(session);
  if (!read) {
    sayUnreadable(session, path, read.error());  // in the setup window too, which therefore stays
    return false;
  }
  if (session.setupController) {
    closeDoc(session);
    session.setDocument(document);
  }
  session.notices().withdraw(kNoticeKey);
  session.setSaveState({.savedAt = session.ports().clock.now()});
  session.setContext(document->context());
  session.halted = haltedEntries(*session.context(), lastSave);
  haltRunningEntries(session);
  noteRecentDocument(session, path);
  return true;
}

}  // namespace pendra
