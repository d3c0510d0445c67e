#include "SendAll.h"

#include "Deeds.h"
#include "document/HaltedEntries.h"
#include "document/RunningTimers.h"
#include "document/Session.h"
#include "document/TimeAway.h"
#include "link/Sending.h"
#include "link/Submission.h"
#include "link/VantorFailure.h"
#include "model/Queries.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra::orders {

namespace {

/// Everything in the document, whatever a window lists.
class AllEntries final : public SubmissionRows {
 public:
  explicit AllEntries(const Sender& sender) : sender_(sender) {}

  [[nodiscard]] std::vector<SubmissionRow> consideredRows() const override { return allRows(); }
  [[nodiscard]] std::vector<SubmissionRow> allRows() const override {
    std::vector<SubmissionRow> rows;
    for (TimeEntry* entry : sender_.session.context()->all<TimeEntry>()) {
      Activity* activity = entry->activity();
      if (!activity) continue;
      rows.push_back({entry, activity, queries::nameOf(activity->customer()),
                      queries::nameOf(activity->job()), queries::nameOf(activity->service())});
    }
    return rows;
  }
  void clearSelection() override {}
  void showAll() override {}

 private:
  const Sender& sender_;
};

/// Whoever gives the order has confirmed it.
class Confirmed final : public SummarySheet {
 public:
  [[nodiscard]] bool run(const Summary&, const std::function<Summary()>&) override { return true; }
  void close() override {}
};

/// The entries that wait to be sent, and how many have left without an answer.
struct Waiting {
  std::vector<Ref<TimeEntry>> unsent;
  int inDoubt = 0;

  explicit Waiting(const ObjectContext& context) {
    for (TimeEntry* entry : context.all<TimeEntry>()) {
      if (!entry->activity()) continue;
      if (entry->sendingSince()) {
        ++inDoubt;
      } else if (SubmissionRow{.entry = entry, .activity = {}, .customer = {}, .job = {}, .service = {}}
                     .isUnsent()) {
        unsent.push_back(entry);
      }
    }
  }
};

/// What a person has to answer first; empty when nothing waits.
QString questionIn(const ObjectContext& context) {
  if (isTimeRunning(context)) return tr("time runs, and what runs has no length yet; stop it first");
  if (!haltedEntries(context).entries.empty()) {
    return tr("the length of an entry that was cut off is asked in Pendra's window");
  }
  if (!timeAway(context).entries.empty()) {
    return tr("whether time counts in which nobody was there is asked in Pendra's window");
  }
  return {};
}

/// Why not everything left. What the window says of an earlier sending, `saidBefore`, is no reason where this
/// one came to a question first.
Error stopped(const Sender& sender, const std::vector<Alert>& questions, const QString& saidBefore) {
  const bool asksOfVantor = std::any_of(questions.begin(), questions.end(), [](const Alert& one) {
    return one.topic == Alert::Topic::VantorNotFound;
  });
  const bool isVantors = asksOfVantor || questions.empty();
  const QString told = lastSending(sender.session.notices());
  const Refusal why = isVantors ? Refusal::NoVantor : Refusal::Refused;
  if (!told.isEmpty() && (told != saidBefore || questions.empty())) return refusal(why, told);
  if (asksOfVantor) return refusal(why, questions.front().message);
  return refusal(why,
                 formatted(tr("it has to be asked in Pendra's window: %@"), {questions.front().message}));
}

}  // namespace

Result<QVariantMap> sendAll(const Sender& sender) {
  const ObjectContext& context = *sender.session.context();
  if (sender.session.isStandalone()) {
    return refusal(Refusal::Refused, tr("this document is used without Vantor"));
  }
  if (auto may = mayChange(context); !may) return may.error();
  const Waiting before(context);
  if (before.unsent.empty() && before.inDoubt == 0) {
    return refusal(Refusal::NoMatch, tr("nothing is to be sent"));
  }
  if (const QString question = questionIn(context); !question.isEmpty()) {
    return refusal(Refusal::Refused, question);
  }
  const UnaskedAlerts::Silence silence(sender.alerts);
  const QString saidBefore = lastSending(sender.session.notices());
  AllEntries rows(sender);
  Confirmed confirmed;
  try {
    Submission({sender.session, sender.checks, sender.lists, rows, confirmed}).sendSelectedTime();
  } catch (const VantorFailure& failure) {
    return refusal(Refusal::NoVantor, failure.plainReason());
  }
  const auto sent = std::count_if(before.unsent.begin(), before.unsent.end(),
                                  [](const Ref<TimeEntry>& entry) { return entry && entry->wasSent(); });
  const Waiting after(context);
  if (!silence.notAsked().empty() || !after.unsent.empty() || after.inDoubt > 0) {
    return stopped(sender, silence.notAsked(), saidBefore);
  }
  return QVariantMap{{QStringLiteral("sent"), static_cast<int>(sent)},
                     {QStringLiteral("inDoubt"), after.inDoubt}};
}

}  // namespace pendra::orders
