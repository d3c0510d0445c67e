#pragma once
// When Vantor no longer has a customer, job or service, or the user deletes one, the activities that named it
// lose it. Nothing is wrong with such an activity in the document; only the user can say what it should name
// instead. Until then the document remembers what was lost.

#include <QStringList>
#include <vector>

#include "document/Session.h"
#include "model/Activity.h"

namespace pendra {

/// What an activity lost and still lacks, as sentences for the user; empty when there is nothing.
[[nodiscard]] QString lossText(const Activity& activity);

/// The user has edited the activity. Takes the notice back when no other activity is affected.
void forgetLoss(Session& session, Activity& activity);

/// What the activities of a document name at the moment when it is made.
class NamesBefore {
 public:
  explicit NamesBefore(const ObjectContext& context);
  /// Compares with what they name now, inside the edit that made the difference: notes what was lost with the
  /// activities and answers how these were called. Completed activities whose time has all been sent are
  /// passed over.
  [[nodiscard]] QStringList noteLosses() const;

 private:
  struct Before {
    Ref<Activity> activity;
    Activity::Loss had;
    QString title;
  };
  std::vector<Before> before_;
};

/// Says in the notice line which activities have lost a name; nothing of none.
void tellOfLosses(Session& session, const QStringList& titles);

}  // namespace pendra
