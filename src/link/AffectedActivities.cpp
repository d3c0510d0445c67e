#include "link/AffectedActivities.h"

#include "model/ActivityTitle.h"
#include "model/TimeEntry.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

const QString kNoticeKey = QStringLiteral("affected activities");
constexpr qsizetype kNamedAtMost = 3;

bool needsNothing(const Activity& activity) {
  const auto entries = activity.entries();
  return activity.completed().value_or(false) &&
         std::all_of(entries.begin(), entries.end(), [](const TimeEntry* one) { return one->wasSent(); });
}

Activity::Loss namesOf(const Activity& activity) {
  return {.customer = activity.customer() != nullptr,
          .job = activity.job() != nullptr,
          .service = activity.service() != nullptr};
}

/// "customer, job and service".
QString listed(const Activity::Loss& loss) {
  QStringList names;
  if (loss.customer) names << tr("customer");
  if (loss.job) names << tr("job");
  if (loss.service) names << tr("service item");
  const QString last = names.takeLast();
  return names.isEmpty() ? last : formatted(tr("%@ and %@"), {names.join(u", "), last});
}

}  // namespace

QString lossText(const Activity& activity) {
  const Activity::Loss loss = activity.loss();
  if (!loss.any()) return {};
  const bool several = loss.customer + loss.job + loss.service > 1;
  return formatted(several ? tr("Its %@ are no longer in the lists and were cleared. "
                                "Edit the activity to choose others.")
                           : tr("Its %@ is no longer in the lists and was cleared. "
                                "Edit the activity to choose another."),
                   {listed(loss)});
}

void forgetLoss(Session& session, Activity& activity) {
  activity.forgetLoss();
  const auto activities = activity.context()->all<Activity>();
  if (std::none_of(activities.begin(), activities.end(),
                   [](const Activity* one) { return one->loss().any() && !needsNothing(*one); })) {
    session.notices().withdraw(kNoticeKey);
  }
}

NamesBefore::NamesBefore(const ObjectContext& context) {
  for (Activity* activity : context.all<Activity>()) {
    before_.push_back({activity, namesOf(*activity), activityTitle(*activity)});
  }
}

QStringList NamesBefore::noteLosses() const {
  QStringList titles;
  for (const Before& before : before_) {
    Activity* activity = before.activity.get();
    if (!activity || needsNothing(*activity)) continue;
    const Activity::Loss has = namesOf(*activity);
    const Activity::Loss lost{.customer = before.had.customer && !has.customer,
                              .job = before.had.job && !has.job,
                              .service = before.had.service && !has.service};
    if (!lost.any()) continue;
    activity->addLoss(lost);
    titles.push_back(before.title);
  }
  return titles;
}

void tellOfLosses(Session& session, const QStringList& titles) {
  if (titles.isEmpty()) return;
  QString named = u'“' + titles.mid(0, kNamedAtMost).join(u"”, “") + u'”';
  const qsizetype more = titles.size() - kNamedAtMost;
  if (more > 0) named += u' ' + counted(more, "and 1 more", "and %Ln more");
  session.notices().post(
      {.key = kNoticeKey,
       .text = formatted(tr("%@: a customer, job or service item is no longer in Vantor and was "
                            "cleared. Edit what is marked before you send its time."),
                         {named}),
       .actions = {},
       .ofDocument = true});
}

}  // namespace pendra
