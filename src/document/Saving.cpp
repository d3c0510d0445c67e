#include "document/Saving.h"

#include "document/SavingElsewhere.h"
#include "document/Session.h"
#include "model/DurationText.h"
#include "model/TimeEntry.h"
#include "platform/Log.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "store/PersistentStore.h"

namespace pendra {

namespace {

const QString kNoticeKey = QStringLiteral("save");
const QString kFileNotice = QStringLiteral("file");
const QString kSettingsNotice = QStringLiteral("settings");
/// So often a copy in the place of the file is nobody's single deed.
constexpr int kCopiesOfAHabit = 3;

void post(Session& session, const QString& key, const QString& text, std::vector<NoticeAction> actions = {}) {
  session.notices().post({.key = key, .text = text, .actions = std::move(actions), .ofDocument = true});
}

/// Why the document is not saved, as a whole sentence.
QString notSavedText(const OpenDocument& document, const Error& why) {
  switch (displaced(why).value_or(Displaced::OutOfReach)) {
    case Displaced::Moved:
      return formatted(tr("“%@” was moved to “%@” and is not saved until you decide."),
                       {document.path(), document.context()->store()->movedTo()});
    case Displaced::Replaced:
      return formatted(tr("“%@” is not saved: %@. Nothing is written there until you decide."),
                       {document.path(), why.text});
    case Displaced::OutOfReach:
      break;
  }
  return formatted(tr("“%@” could not be saved: %@. Pendra keeps trying."), {document.path(), why.text});
}

/// Says, once each, what the file survived that others did to it.
void tellStory(Session& session, OpenDocument& document) {
  const FileStory& story = document.context()->store()->story();
  if (story.madeAnew > std::exchange(document.told.madeAnew, story.madeAnew)) {
    post(session, kFileNotice,
         formatted(tr("“%@” was deleted by another program and has been made anew. Nothing is lost."),
                   {document.path()}));
  }
  if (story.takenOver < kCopiesOfAHabit || std::exchange(document.told.ofCopies, true)) return;
  post(session, kFileNotice,
       formatted(tr("Another program keeps putting copies of “%@” in its place, as synchronised folders do. "
                    "Pendra goes on with each that holds everything, and asks about any other."),
                 {document.path()}));
}

/// What closing would lose: "2 time entries (01:30:00) and 1 other change".
QString unsavedText(const ObjectContext& context) {
  double seconds = 0;
  const auto entries = context.unsaved<TimeEntry>();
  for (const TimeEntry* entry : entries) seconds += entry->storedDuration();
  const std::size_t others = context.numberOfUnsaved() - entries.size();
  QStringList parts;
  if (!entries.empty()) {
    parts << counted(entries.size(), "1 time entry", "%Ln time entries") + u" (" + durationText(seconds) +
                 u')';
  }
  if (others > 0 && entries.empty()) parts << counted(others, "1 change", "%Ln changes");
  if (others > 0 && !entries.empty()) parts << counted(others, "1 other change", "%Ln other changes");
  return parts.isEmpty() ? tr("what the other version lacks") : parts.join(tr(" and "));
}

}  // namespace

Result<void> saveContext(Session& session) {
  const auto context = session.context();
  return context ? context->save() : Result<void>();
}

void saveContextOrLog(Session& session) {
  if (const auto saved = saveContext(session); !saved) {
    logLine(formatted(u"PENDRA Save Error = %@", {saved.error().text}));
  }
}

void sayWhetherSaved(Session& session) {
  OpenDocument* document = session.document();
  if (!document) return session.notices().withdraw(kNoticeKey);
  tellStory(session, *document);
  const auto& failure = document->context()->commitState().failure;
  if (!failure) {
    document->told.reason.clear();
    document->told.closeRefusedAt.reset();
    return session.notices().withdraw(kNoticeKey);
  }
  if (std::exchange(document->told.reason, failure->why.text) == failure->why.text) return;
  session.notices().post({.key = kNoticeKey,
                          .text = notSavedText(*document, failure->why),
                          .actions = waysToSave(session),
                          .ofDocument = true,
                          .asks = true});
}

void sayHowFileIsHeld(Session& session) {
  const OpenDocument& document = *session.document();
  const PersistentStore& store = *document.context()->store();
  if (!store.isWritable()) {
    post(session, kFileNotice,
         formatted(tr("“%@” may only be read. What you change here is not stored in it."), {document.path()}),
         waysToSave(session));
  } else if (!store.isLocked()) {
    post(session, kFileNotice,
         formatted(tr("“%@” lies where no program can keep others out. Open it in one place at a time."),
                   {document.path()}));
  }
}

bool wouldLoseWork(const OpenDocument& document) {
  const ObjectContext& context = *document.context();
  const auto& failure = context.commitState().failure;
  if (!failure || document.told.copiedAt == context.changeCount()) return false;
  // Of a file that was replaced not even what had been stored is left.
  return context.hasChanges() || displaced(failure->why) == Displaced::Replaced;
}

void sayWhetherSettingsAreStored(Session& session) {
  const UserDefaults& defaults = session.ports().defaults;
  if (!defaults.failure()) return session.notices().withdraw(kSettingsNotice);
  session.notices().post({.key = kSettingsNotice,
                          .text = formatted(tr("Your settings could not be stored in “%@”: %@."),
                                            {defaults.path(), defaults.failure()->text}),
                          .actions = {}});
}

bool saveBeforeClosing(Session& session) {
  OpenDocument* document = session.document();
  if (!document) return true;
  saveContextOrLog(session);
  if (!wouldLoseWork(*document)) return true;
  const ObjectContext& context = *document->context();
  const quint64 changes = context.changeCount();
  if (std::exchange(document->told.closeRefusedAt, changes) == changes) return true;
  post(session, kNoticeKey,
       formatted(tr("“%@” stays open, because it could not be saved: %@. Closing it again loses %@."),
                 {document->path(), context.commitState().failure->why.text, unsavedText(context)}),
       waysToSave(session));
  return false;
}

}  // namespace pendra
