#include "link/AffectedActivities.h"

#include "link/ActivityTitle.h"
#include "model/TimePeriod.h"
#include "platform/Text.h"

namespace pendra {

namespace {

const QString kNoticeKey = QStringLiteral("affected activities");
constexpr qsizetype kNamedAtMost = 3;

QString fileOf(const Session& session) {
  const CorvelFileDoc* document = session.theFileDoc();
  return document ? document->fileURL().value_or(QString()) : QString();
}

bool needsNothing(const Activity& activity) {
  const auto periods = activity.timePeriod();
  return activity.completed().value_or(false) &&
         std::all_of(periods.begin(), periods.end(),
                     [](const TimePeriod* one) { return one->wasSubmitted(); });
}

}  // namespace

bool AffectedActivities::contains(const Activity& activity) const {
  const auto found = losses_.constFind(activity.objectID());
  if (found == losses_.constEnd()) return false;
  return (found->customer && !activity.customer()) || (found->job && !activity.job()) ||
         (found->service && !activity.service());
}

void AffectedActivities::forget(const Activity& activity) {
  const Notifier::Change change(changes_);
  losses_.remove(activity.objectID());
}

void AffectedActivities::add(const Session& session, qint64 activity, Loss loss) {
  if (const QString file = fileOf(session); file != document_) {
    document_ = file;
    losses_.clear();
  }
  Loss& known = losses_[activity];
  known = {known.customer || loss.customer, known.job || loss.job, known.service || loss.service};
}

LossWatch::LossWatch(Session& session, AffectedActivities& affected)
    : session_(session), affected_(affected) {
  if (!session_.myContext()) return;
  for (Activity* activity : session_.myContext()->all<Activity>()) {
    before_.push_back({activity, activity->customer() != nullptr, activity->job() != nullptr,
                       activity->service() != nullptr, activityTitle(*activity)});
  }
}

LossWatch::~LossWatch() {
  QStringList titles;
  for (const Before& before : before_) {
    const Activity* activity = before.activity.get();
    if (!activity || needsNothing(*activity)) continue;
    const AffectedActivities::Loss loss{.customer = before.hadCustomer && !activity->customer(),
                                        .job = before.hadJob && !activity->job(),
                                        .service = before.hadService && !activity->service()};
    if (!loss.any()) continue;
    affected_.add(session_, activity->objectID(), loss);
    titles.push_back(before.title);
  }
  if (titles.isEmpty()) return;
  affected_.changes().changed();
  tell(titles);
}

void LossWatch::tell(const QStringList& titles) const {
  QString named = u'“' + titles.mid(0, kNamedAtMost).join(u"”, “") + u'”';
  if (titles.size() > kNamedAtMost) {
    named += formatted(u" and %@ more", {QString::number(titles.size() - kNamedAtMost)});
  }
  session_.notices().post({.key = kNoticeKey,
                           .text = formatted(u"%@: a customer, job or service is no longer in Vantor and was "
                                             "cleared. Edit what is marked before you send its time.",
                                             {named}),
                           .actions = {}});
}

}  // namespace pendra
