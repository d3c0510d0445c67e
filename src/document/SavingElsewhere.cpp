#include "document/SavingElsewhere.h"

#include <QDir>
#include <QFileInfo>

#include "document/DocumentFiles.h"
#include "document/DocumentLoading.h"
#include "document/Documents.h"
#include "document/Saving.h"
#include "document/Session.h"
#include "platform/Log.h"
#include "platform/Preferences.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "store/PersistentStore.h"

namespace pendra {

namespace {

const QString kCopyNotice = QStringLiteral("copy");
const QString kDocumentType = QStringLiteral("pdr");

/// The first free name beside the document.
QString freePathBeside(const OpenDocument& document, const QString& folder) {
  return firstFreePath(folder + u'/' + document.displayName(), kDocumentType);
}

void sayNotWritten(Session& session, const QString& path, const Error& error) {
  session.notices().post({.key = kCopyNotice,
                          .text = formatted(tr("“%@” could not be written: %@."), {path, error.text}),
                          .actions = {},
                          .ofDocument = true});
}

/// Goes on with the file that the document has now, or says why there is none.
void goOn(Session& session, const QString& path, const Result<void>& done) {
  if (!done) return sayNotWritten(session, path, done.error());
  session.notices().withdraw(kCopyNotice);
  if (!session.document()->isAt(path)) {
    session.document()->setPath(path);
    setLastDocumentPath(session, path);
    noteRecentDocument(session, path);
  }
  std::ignore = session.context()->save();  // what it could not do stands in the commit's state
}

/// The name of the document may be the one that the other version has from now on.
void sayWhereItGoesOn(Session& session, const QString& path) {
  session.notices().post(
      {.key = kCopyNotice,
       .text = formatted(tr("Your work goes on in “%@”."), {path}),
       .actions = {{tr("Show"), [&session, path] { session.ports().workspace.reveal(path); }}},
       .ofDocument = true});
}

void copyTo(Session& session, const QString& target) {
  OpenDocument& document = *session.document();
  if (document.isAt(target)) return saveOverIt(session);
  const ObjectContext& context = *document.context();
  auto written = takeJournalAway(target, session.objectModel());
  if (written) written = context.store()->writeCopy(context, target, Existing::Replace);
  if (!written) return sayNotWritten(session, target, written.error());
  document.told.copiedAt = context.changeCount();
  sayWritten(session, kCopyNotice, target);
}

}  // namespace

std::vector<NoticeAction> waysToSave(Session& session) {
  const auto& failure = session.context()->commitState().failure;
  std::vector<NoticeAction> ways;
  // What the notice says stays true until a save succeeds, which takes it back.
  const auto add = [&](const char* title, void (*act)(Session&)) {
    ways.push_back(
        {.title = tr(title), .run = [&session, act] { act(session); }, .isDone = [] { return false; }});
  };
  const auto why = failure ? displaced(failure->why) : std::nullopt;
  if (why == Displaced::Replaced) {
    add(QT_TRANSLATE_NOOP("pendra", "Save Over It"), &saveOverIt);
    add(QT_TRANSLATE_NOOP("pendra", "Keep Both"), &keepBoth);
  } else if (why == Displaced::Moved) {
    add(QT_TRANSLATE_NOOP("pendra", "Follow It"), &followIt);
  }
  add(QT_TRANSLATE_NOOP("pendra", "Save a Copy…"), &saveACopy);
  return ways;
}

void saveACopy(Session& session) {
  const OpenDocument* document = session.document();
  if (!document) return;
  const Ports& ports = session.ports();
  const QString proposed = freePathBeside(*document, documentFolder(ports.places));
  ports.panels.beginSavePanel({.title = tr("Save a Copy"),
                               .proposedName = QFileInfo(proposed).fileName(),
                               .folder = {},
                               .requiredType = kDocumentType},
                              [&session, document](const std::optional<QString>& chosen) {
                                // Another document may have been opened beside the panel.
                                if (chosen && session.document() == document) copyTo(session, *chosen);
                              });
}

void saveOverIt(Session& session) {
  if (!session.document()) return;
  const QString path = session.document()->path();
  goOn(session, path, session.context()->store()->moveTo(*session.context(), path, Existing::Replace));
}

void keepBoth(Session& session) {
  if (!session.document()) return;
  const QString path = freePathBeside(*session.document(), QFileInfo(session.document()->path()).path());
  goOn(session, path, session.context()->store()->moveTo(*session.context(), path, Existing::Keep));
  if (session.document()->isAt(path)) sayWhereItGoesOn(session, path);
}

void followIt(Session& session) {
  if (!session.document()) return;
  const QString path = session.context()->store()->movedTo();
  goOn(session, path.isEmpty() ? session.document()->path() : path, session.context()->store()->follow());
}

void rescue(Session& session) {
  const OpenDocument* document = session.document();
  if (!document || !wouldLoseWork(*document)) return;
  const Places& places = session.ports().places;
  for (const QString& folder :
       {QFileInfo(document->path()).path(), documentFolder(places), places.documents, QDir::tempPath()}) {
    const QString path = firstFreePath(
        folder + u'/' + formatted(tr("%@ (rescued)"), {document->displayName()}), kDocumentType);
    if (!document->context()->store()->writeCopy(*document->context(), path, Existing::Keep)) continue;
    session.ports().defaults.setText(preferences::kRescued, path);
    setLastDocumentPath(session, path);
    return logLine(formatted(u"what could not be saved was written to %@", {path}));
  }
}

void tellOfRescued(Session& session) {
  const QString path = session.ports().defaults.text(preferences::kRescued).value_or(QString());
  if (path.isEmpty()) return;
  session.ports().defaults.setText(preferences::kRescued, {});
  session.notices().post(
      {.key = kCopyNotice,
       .text =
           formatted(tr("Pendra had to end and could not save your document. All of it is in “%@”."), {path}),
       .actions = {{tr("Show"), [&session, path] { session.ports().workspace.reveal(path); }}}});
}

void sayWritten(Session& session, const QString& key, const QString& path) {
  session.notices().post(
      {.key = key,
       .text = formatted(tr("Written to “%@”."), {path}),
       .actions = {{tr("Show"), [&session, path] { session.ports().workspace.reveal(path); }}}});
}

}  // namespace pendra
