#include "channel/ChannelFailure.h"
#include "document/Saving.h"
#include "link/ActivityTitle.h"
#include "link/MergedRecords.h"
#include "link/PlainReason.h"
#include "link/Submission.h"
#include "link/TimeRecord.h"
#include "link/UnknownFates.h"
#include "model/DocumentSettings.h"
#include "platform/Log.h"
#include "platform/Preferences.h"
#include "platform/Text.h"

namespace pendra {

namespace {

const QString kOneLacksAPart =
    QStringLiteral("one lacks a customer, job or service that Vantor knows, and none was sent after it");

/// An entry of the document that exists while one record is being sent, and is never in the file.
class TemporaryEntry {
 public:
  explicit TemporaryEntry(ObjectContext& context)
      : context_(context), period_(context.insertTemporary<TimeEntry>()) {}
  ~TemporaryEntry() { context_.deleteObject(period_); }
  TemporaryEntry(const TemporaryEntry&) = delete;
  TemporaryEntry& operator=(const TemporaryEntry&) = delete;

  [[nodiscard]] TimeEntry& period() { return period_; }

 private:
  ObjectContext& context_;
  TimeEntry& period_;
};

}  // namespace

bool Submission::sendEntries() {
  if (!parts_.checks.checkCompany()) return false;
  run_ = {};
  bool sentAll = false;
  {
    const Spinning spinning(parts_.checks.progress(), {}, 0);
    const bool merging = parts_.session.ports().defaults.boolean(preferences::kMergeSubmissions);
    sentAll = merging ? sendMergedEntries() : sendOneByOne();
  }
  jobsBefore_.reset();
  parts_.checks.closeConnection();
  saveContextOrLog(parts_.session);
  parts_.rows.reloadData();
  finish(sentAll);
  return sentAll;
}

bool Submission::sendOneByOne() {
  const auto rows = parts_.rows.consideredRows();
  run_.total = static_cast<int>(std::count_if(rows.begin(), rows.end(), [](const SubmissionRow& row) {
    return row.period && row.period->submittedSeconds() < 1.0;
  }));
  bool sentAll = true;
  for (const SubmissionRow& row : rows) {
    if (!row.period || !row.activity) continue;
    if (lostItsJob(*row.activity)) {
      alert(QStringLiteral("A customer, job, or service name has changed in Vantor"),
            QStringLiteral(" How you fix this depends on why the change was made. Check with your Vantor "
                           "administrator to figure out your next steps."));
      sentAll = false;
    } else if (!sendOneEntry(*row.period, *row.activity)) {
      sentAll = false;
    }
    if (!run_.stopped.isEmpty()) break;
  }
  return sentAll;
}

bool Submission::sendMergedEntries() {
  const auto records = mergedRecords(parts_.rows.consideredRows(), parts_.session.ports().calendar);
  run_.total = static_cast<int>(records.size());
  std::vector<TimeEntry*> mergedEntries;
  return std::all_of(records.begin(), records.end(),
                     [&](const MergedRecord& record) { return sendMerged(record, mergedEntries); });
}

bool Submission::sendMerged(const MergedRecord& record, std::vector<TimeEntry*>& mergedEntries) {
  TimeEntry& base = *record.entries.front();
  Activity& activity = *base.activity();
  if (lostItsJob(activity)) {
    alert(QStringLiteral("A customer, job, or service is inactive or deleted in Vantor"),
          QStringLiteral("The affected customer, job, or service has been cleared in Pendra and any "
                         "activities for it remain unsent. Ask your Vantor administrator what customer, job, "
                         "or service to use for these activities. Then update the activities  and send them "
                         "to Vantor."));
    jobsBefore_.reset();
    run_.stopped = kOneLacksAPart;
    return false;
  }
  if (!hasCustomerAndService(activity)) {
    run_.stopped = kOneLacksAPart;
    return false;
  }
  TemporaryEntry temporary(*parts_.session.context());
  temporary.period().setActivity(&activity);
  temporary.period().setDuration(record.duration);
  temporary.period().setStart(record.start);
  // Kept: the list is never emptied, so entries merged earlier get a later stamp with every record.
  mergedEntries.insert(mergedEntries.end(), record.entries.begin() + 1, record.entries.end());
  if (!transmit(temporary.period(), activity, record.entries)) return false;
  stamp([&](Instant now) {
    markSent(base, now);
    for (TimeEntry* entry : mergedEntries) markSent(*entry, now);
  });
  return true;
}

bool Submission::sendOneEntry(TimeEntry& period, Activity& activity) {
  if (!hasCustomerAndService(activity)) return false;
  if (period.submittedSeconds() >= 1.0) return true;
  TimeEntry* const entries[] = {&period};
  if (!transmit(period, activity, entries)) return false;
  stamp([&](Instant now) { markSent(period, now); });
  return true;
}

/// The stamps of a record are stored with the next record's mark, or with the save at the end.
void Submission::stamp(const std::function<void(Instant)>& mark) {
  const Instant now = parts_.session.ports().clock.now();
  parts_.session.context()->fill([&] { mark(now); });
}

bool Submission::hasCustomerAndService(const Activity& activity) const {
  if (activity.customer() && activity.service()) return true;
  alert(QStringLiteral("A customer, job, or service is inactive or deleted in Vantor"),
        QStringLiteral("The affected customer, job, or service has been cleared in Pendra and any "
                       "activities for it remain unsent. Ask your Vantor administrator what customer, job, "
                       "or service to use for these activities. Then update the activities and send them "
                       "to Vantor."));
  return false;
}

bool Submission::transmit(const TimeEntry& period, const Activity& activity, Entries entries) {
  parts_.checks.progress().showProgress(++run_.position, run_.total);
  // This writes the stamps of the record before, too.
  if (const auto marked = markSending(parts_.session, entries); !marked) {
    run_.stopped = formatted(u"the document could not be saved: %@", {marked.error().text});
    return false;
  }
  const DocumentSettings* document = parts_.session.settings();
  const Identity* identity = document ? document->identity() : nullptr;
  try {
    const QString record = kTimeRecordDeclaration + timeRecord(activity, period, identity);
    parts_.checks.remoteServer().submitTime(record);
  } catch (const ChannelFailure& failure) {
    logLine(formatted(u"%@: %@", {failure.name(), failure.reason()}));
    if (failure.fate() == ChannelFailure::Fate::NeverLeft) {
      unmarkSending(parts_.session, entries);
      run_.stopped = plainReason(failure);
    } else {
      run_.stopped =
          formatted(u"Vantor did not answer for “%@”, which will be asked about before the next sending",
                    {activityTitle(activity)});
    }
    return false;
  }
  ++run_.sent;
  return true;
}

void Submission::finish(bool sentAll) {
  Notices& notices = parts_.session.notices();
  const QString key = kSendNoticeKey.toString();
  if (sentAll) {
    notices.withdraw(key);
    return;
  }
  const QString count =
      formatted(u"%@ of %@ records were sent", {QString::number(run_.sent), QString::number(run_.total)});
  const QString why = run_.stopped.isEmpty()
                          ? QStringLiteral("the others lack a customer, job or service that Vantor knows")
                          : run_.stopped;
  notices.post({.key = key, .text = formatted(u"%@; %@.", {count, why}), .actions = {}, .ofDocument = true});
}

}  // namespace pendra
