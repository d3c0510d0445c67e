#include "link/Sending.h"

#include "document/Saving.h"
#include "link/MergedRecords.h"
#include "link/TimeRecord.h"
#include "link/UnknownFates.h"
#include "link/VantorFailure.h"
#include "model/ActivityTitle.h"
#include "model/DocumentSettings.h"
#include "platform/Log.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

const QString kNoticeKey = QStringLiteral("send");

constexpr const char* kInactive =
    QT_TRANSLATE_NOOP("pendra", "A customer, job, or service is inactive or deleted in Vantor");

/// An entry of the document that exists while one record is being sent, and is never in the file.
class TemporaryEntry {
 public:
  explicit TemporaryEntry(ObjectContext& context)
      : context_(context), entry_(context.insertTemporary<TimeEntry>()) {}
  ~TemporaryEntry() { context_.deleteObject(entry_); }
  TemporaryEntry(const TemporaryEntry&) = delete;
  TemporaryEntry& operator=(const TemporaryEntry&) = delete;

  [[nodiscard]] TimeEntry& entry() { return entry_; }

 private:
  ObjectContext& context_;
  TimeEntry& entry_;
};

bool hasCustomerAndService(const Activity& activity) { return activity.customer() && activity.service(); }

}  // namespace

Sending::Sending(Session& session, ConnectionChecks& checks, std::vector<SubmissionRow> rows,
                 QSet<qint64> jobsBefore)
    : session_(session), checks_(checks), rows_(std::move(rows)), jobsBefore_(std::move(jobsBefore)) {}

bool Sending::run(bool merging) {
  bool sentAll = false;
  {
    const Spinning spinning(checks_.progress(), {}, 0);
    sentAll = merging ? sendMerged() : sendOneByOne();
  }
  stampInAnEdit();
  checks_.closeConnection();
  saveContextOrLog(session_);
  tell(sentAll);
  return sentAll;
}

bool Sending::sendOneByOne() {
  total_ = static_cast<int>(
      std::count_if(rows_.begin(), rows_.end(), [](const SubmissionRow& row) { return row.isUnsent(); }));
  bool sentAll = true;
  for (const SubmissionRow& row : rows_) {
    if (!stopped_.isEmpty()) break;
    if (row.entry && row.activity && !sendRow(row)) sentAll = false;
  }
  return sentAll;
}

/// True when the entry is sent or had been.
bool Sending::sendRow(const SubmissionRow& row) {
  TimeEntry& entry = *row.entry;
  const Activity& activity = *row.activity;
  if (lostItsJob(activity)) {
    alert(tr("A customer, job, or service name has changed in Vantor"),
          tr(" How you fix this depends on why the change was made. Check with your Vantor administrator to "
             "figure out your next steps."));
    return false;
  }
  if (!hasCustomerAndService(activity)) {
    alert(tr(kInactive), tr("The affected customer, job, or service has been cleared in Pendra and any "
                            "activities for it remain unsent. Ask your Vantor administrator what customer, "
                            "job, or service to use for these activities. Then update the activities and "
                            "send them to Vantor."));
    return false;
  }
  if (!row.isUnsent()) return true;
  TimeEntry* const entries[] = {&entry};
  if (!transmit(entry, activity, entries)) return false;
  toStamp_ = {&entry};
  return true;
}

bool Sending::sendMerged() {
  const auto records = mergedRecords(rows_, session_.ports().calendar);
  total_ = static_cast<int>(records.size());
  std::vector<TimeEntry*> mergedEntries;
  return std::all_of(records.begin(), records.end(),
                     [&](const MergedRecord& record) { return sendRecord(record, mergedEntries); });
}

bool Sending::sendRecord(const MergedRecord& record, std::vector<TimeEntry*>& mergedEntries) {
  TimeEntry& base = *record.entries.front();
  const Activity& activity = *base.activity();
  if (lostItsJob(activity) || !hasCustomerAndService(activity)) {
    // Kept for those who search for them: two texts that differ by one blank.
    alert(
        tr(kInactive),
        lostItsJob(activity)
            ? tr("The affected customer, job, or service has been cleared in Pendra and any activities for "
                 "it remain unsent. Ask your Vantor administrator what customer, job, or service to use for "
                 "these activities. Then update the activities  and send them to Vantor.")
            : tr("The affected customer, job, or service has been cleared in Pendra and any activities for "
                 "it remain unsent. Ask your Vantor administrator what customer, job, or service to use for "
                 "these activities. Then update the activities and send them to Vantor."));
    stopped_ = tr("one lacks a customer, job or service item that Vantor knows, and none was sent after it");
    return false;
  }
  // Of no activity: in the sums of its own the time would count twice while it is sent.
  TemporaryEntry temporary(*session_.context());
  temporary.entry().setDuration(record.duration);
  temporary.entry().setStart(record.start);
  // Kept, for what reads the documents: the list is never emptied, so entries merged earlier get a later
  // stamp with every record.
  mergedEntries.insert(mergedEntries.end(), record.entries.begin() + 1, record.entries.end());
  if (!transmit(temporary.entry(), activity, record.entries)) return false;
  toStamp_ = mergedEntries;
  toStamp_.push_back(&base);
  return true;
}

bool Sending::lostItsJob(const Activity& activity) const {
  return !activity.job() && jobsBefore_.contains(activity.objectID());
}

void Sending::stamp() {
  for (TimeEntry* entry : std::exchange(toStamp_, {})) markSent(*entry, arrivedAt_);
}

void Sending::stampInAnEdit() {
  std::ignore = session_.context()->edit(QString(), {.undoable = false}, [this] { stamp(); });
}

bool Sending::transmit(const TimeEntry& entry, const Activity& activity, Entries entries) {
  checks_.progress().showProgress(++position_, total_);
  if (const auto marked = markSending(session_, entries, activityTitle(activity), [this] { stamp(); });
      !marked) {
    stopped_ = formatted(tr("the document could not be saved: %@"), {marked.error().text});
    return false;
  }
  const DocumentSettings* document = session_.settings();
  const Identity* identity = document ? document->identity() : nullptr;
  try {
    checks_.remoteServer().submitTime(kTimeRecordDeclaration + timeRecord(activity, entry, identity));
  } catch (const VantorFailure& failure) {
    logLine(formatted(u"%@: %@", {failure.name(), failure.reason()}));
    if (failure.fate() == VantorFailure::Fate::NeverLeft) {
      unmarkSending(session_, entries);
      stopped_ = failure.plainReason();
    } else {
      stopped_ = formatted(
          failure.wasCancelled()
              ? tr("it was cancelled while “%@” was on its way, which will be asked about before the next "
                   "sending")
              : tr("Vantor did not answer for “%@”, which will be asked about before the next sending"),
          {activityTitle(activity)});
    }
    return false;
  }
  ++sent_;
  arrivedAt_ = session_.ports().clock.now();
  return true;
}

void Sending::alert(const QString& message, const QString& informative) {
  stampInAnEdit();  // no alert stands before what is true
  session_.ports().alerts.runAlert({.style = Alert::Style::Warning,
                                    .message = message,
                                    .informative = informative,
                                    .buttons = {tr("OK")},
                                    .topic = Alert::Topic::HeldBack});
}

void Sending::tell(bool sentAll) {
  if (sentAll) return forgetLastSending(session_.notices());
  const QString count =
      counted(total_, "%@ of 1 record was sent", "%@ of %Ln records were sent", {QLocale().toString(sent_)});
  const QString why =
      stopped_.isEmpty() ? tr("the others lack a customer, job or service item that Vantor knows") : stopped_;
  session_.notices().post(
      {.key = kNoticeKey, .text = formatted(u"%@; %@.", {count, why}), .actions = {}, .ofDocument = true});
}

QString lastSending(const Notices& notices) {
  const auto& standing = notices.standing();
  const auto said =
      std::find_if(standing.begin(), standing.end(), [](const Notice& one) { return one.key == kNoticeKey; });
  return said == standing.end() ? QString() : said->text;
}

void forgetLastSending(Notices& notices) { notices.withdraw(kNoticeKey); }

}  // namespace pendra
