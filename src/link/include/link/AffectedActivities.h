#pragma once
// When Vantor no longer has a customer, job or service, the activities that named it lose it. Nothing is
// wrong with such an activity in the document; only the user can say what it should name instead.

#include <QHash>
#include <QStringList>
#include <vector>

#include "document/Session.h"
#include "model/Activity.h"

namespace pendra {

/// The activities of the open document that lost something and have not been repaired.
class AffectedActivities {
 public:
  /// What an activity no longer has.
  struct Loss {
    bool customer = false;
    bool job = false;
    bool service = false;
    [[nodiscard]] bool any() const { return customer || job || service; }
  };

  /// Whether the activity lost something that it still lacks; the tables mark it.
  [[nodiscard]] bool contains(const Activity& activity) const;
  /// The user has seen to the activity, whatever it names now.
  void forget(const Activity& activity);
  /// Announces the changes of what `contains` answers.
  [[nodiscard]] Notifier& changes() { return changes_; }

 private:
  friend class LossWatch;
  void add(const Session& session, qint64 activity, Loss loss);

  // By row and file, because an update of the lists reads the document anew.
  QString document_;
  QHash<qint64, Loss> losses_;
  Notifier changes_;
};

/// Compares what the activities name when it is made with what they name when it ends; adds those that lost
/// something and says so in the notice line. Completed activities whose time has all been sent are passed
/// over.
class [[nodiscard]] LossWatch {
 public:
  LossWatch(Session& session, AffectedActivities& affected);
  ~LossWatch();
  LossWatch(const LossWatch&) = delete;
  LossWatch& operator=(const LossWatch&) = delete;

 private:
  struct Before {
    Ref<Activity> activity;
    bool hadCustomer;
    bool hadJob;
    bool hadService;
    QString title;
  };
  void tell(const QStringList& titles) const;

  Session& session_;
  AffectedActivities& affected_;
  std::vector<Before> before_;
};

}  // namespace pendra
