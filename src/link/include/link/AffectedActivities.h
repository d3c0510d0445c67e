#pragma once
// When Vantor no longer has a customer, job or service, the activities that named it lose it. Nothing is
// wrong with such an activity in the document; only the user can say what it should name instead. Until
// then the document remembers what was lost.

#include <QStringList>
#include <vector>

#include "document/Session.h"
#include "model/Activity.h"

namespace pendra {

/// What an activity lost and still lacks, as sentences for the user; empty when there is nothing.
[[nodiscard]] QString lossText(const Activity& activity);

/// The user has edited the activity. Takes the notice back when no other activity is affected.
void forgetLoss(Session& session, Activity& activity);

/// Compares what the activities name when it is made with what they name when it ends; notes what was lost
/// and says so in the notice line. Completed activities whose time has all been sent are passed over.
class [[nodiscard]] LossWatch {
 public:
  explicit LossWatch(Session& session);
  ~LossWatch();
  LossWatch(const LossWatch&) = delete;
  LossWatch& operator=(const LossWatch&) = delete;

 private:
  struct Before {
    Ref<Activity> activity;
    Activity::Loss had;
    QString title;
  };
  void tell(const QStringList& titles) const;

  Session& session_;
  std::vector<Before> before_;
};

}  // namespace pendra
