#include "document/NewDocument.h"

#include <QFileInfo>

#include "document/DocumentClosing.h"
#include "document/DocumentFiles.h"
#include "document/DocumentLoading.h"
#include "document/Documents.h"
#include "document/RunningTimers.h"
#include "document/Saving.h"
#include "document/Session.h"
#include "model/Queries.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "store/PersistentStore.h"

namespace pendra {

namespace {

const QString kNoticeKey = QStringLiteral("setup");

Result<std::unique_ptr<OpenDocument>> readFrom(const Session& session, const QString& path) {
  return OpenDocument::read(path, session.objectModel(), session.ports().clock, session.ports().calendar);
}

/// Writes the document under a name of its own.
Result<void> writeDraft(const Session& session, const QString& draft, const NewDocument& wanted) {
  const auto made = readFrom(session, draft);
  if (!made) return made.error();
  DocumentSettings& settings = made.value()->settings();
  made.value()->context()->fill([&] {
    settings.identity()->setEmployeeName(wanted.employeeName);
    settings.identity()->setCompanyFileName(wanted.companyFileName);
    settings.setStandalone(wanted.standalone);
  });
  return made.value()->context()->save();
}

/// Whether what stands at the path may be replaced: a document that could be read, or nothing.
Result<void> mayBeReplaced(const Session& session, const QString& path) {
  if (QFileInfo(path).size() == 0 && !QFileInfo(path).isDir()) return {};
  if (session.document() && session.document()->isAt(path)) return {};
  if (auto recovered = PersistentStore::recover(path, session.objectModel()); !recovered) return recovered;
  return PersistentStore::check(path, session.objectModel());
}

/// Whether the document that is open may be left for the new one.
Result<void> mayLeave(Session& session, const NewDocument& wanted) {
  // Setup may replace the very file that is open, which then is nobody's loss.
  if (session.document() && session.document()->isAt(wanted.path)) return {};
  stopAllActivities(session);
  if (saveBeforeClosing(session)) return {};
  return Error{QStringLiteral("document"), 0, tr("the document that is open could not be saved")};
}

Result<void> makeFile(Session& session, const NewDocument& wanted) {
  if (auto may = mayBeReplaced(session, wanted.path); !may) return may;
  Draft draft(wanted.path);
  if (auto opened = draft.open(); !opened) return opened;
  if (auto written = writeDraft(session, draft.name(), wanted); !written) return written;
  if (auto left = mayLeave(session, wanted); !left) return left;
  if (auto clear = takeJournalAway(wanted.path, session.objectModel()); !clear) return clear;
  return draft.finish(Existing::Replace);
}

void sayNotMade(Session& session, const QString& path, const Error& error) {
  session.notices().post(
      {.key = kNoticeKey,
       .text = formatted(tr("“%@” could not be created: %@."), {QFileInfo(path).fileName(), error.text}),
       .actions = {}});
}

void discardDefault(Session& session, const QString& path) {
  if (isDefaultPath(session.ports().places, path) && PersistentStore::discard(path)) {
    forgetRecentDocument(session, path);
  }
}

}  // namespace

bool makeDocument(Session& session, const NewDocument& wanted) {
  const QString ofNobody = documentOfNobody(session);
  const bool replacesIt = session.document() && session.document()->isAt(wanted.path);
  if (const auto made = makeFile(session, wanted); !made) {
    sayNotMade(session, wanted.path, made.error());
    return false;
  }
  session.notices().withdraw(kNoticeKey);
  if (replacesIt) session.close();  // its file is no more
  if (!loadDocument(session, wanted.path)) return false;
  if (!ofNobody.isEmpty() && !replacesIt) discardDefault(session, ofNobody);
  return true;
}

QString documentOfNobody(const Session& session) {
  if (!session.document()) return {};
  const ObjectContext& context = *session.context();
  const Identity* owner = queries::firstIdentity(context);
  const bool isNobodys = !owner || owner->employeeName().value_or(QString()).isEmpty();
  const bool isEmpty = context.all<Activity>().empty() && context.all<Customer>().empty() &&
                       context.all<Job>().empty() && context.all<Service>().empty() &&
                       context.all<TimeEntry>().empty();
  return isNobodys && isEmpty ? session.document()->path() : QString();
}

QString freeNameIn(const QString& folder, const QString& name, const QString& unasked) {
  const QString plain = folder + u'/' + name;
  if (!QFileInfo::exists(plain) || (!unasked.isEmpty() && isSameFile(plain, unasked))) return name;
  const QFileInfo file(name);
  const QString base = name.chopped(file.suffix().size() + 1);
  return firstFreePath(folder + u'/' + base, file.suffix()).sliced(folder.size() + 1);
}

}  // namespace pendra
