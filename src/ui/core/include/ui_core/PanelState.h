#pragma once
// What the panel of the desktop shows: whether time runs, what, and how long. It is read at a glance and from
// far off its windows, so that it never says more than the document does.

#include <functional>

#include "document/Session.h"
#include "store/Observers.h"
#include "ui_core/RunningTimers.h"

namespace pendra {

/// What the sign in the panel says.
struct PanelSign {
  bool hasDocument = false;
  int running = 0;    ///< how many timers
  bool asks = false;  ///< an answer of the user's is waited for
  friend bool operator==(const PanelSign&, const PanelSign&) = default;
};

/// What the key does that acts from everywhere, for the desktop to show.
[[nodiscard]] QString whatTheKeyDoes();

/// The logic of the panel's icon and menu: they start and stop what the windows do, by the same edits.
class PanelState {
 public:
  /// `busyWith` says why nothing may be changed now, empty when it may. Both must outlive it.
  PanelState(Session& session, std::function<QString()> busyWith);

  [[nodiscard]] PanelSign sign() const;
  /// What runs and for how long, to the minute.
  [[nodiscard]] QString toolTip() const;
  /// In how many seconds the tip says something else by itself; none while nothing runs.
  [[nodiscard]] std::optional<double> nextMinute() const;

  [[nodiscard]] std::vector<RunningTimer> running() const;
  /// What is offered to be started.
  [[nodiscard]] std::vector<Activity*> latest() const;
  /// Why nothing can be started or stopped now; empty when it can.
  [[nodiscard]] QString refusal() const { return busyWith_(); }

  /// Each does nothing while something else is asked, and says so in the notice line.
  void start(const Ref<Activity>& activity);
  void stop(const Ref<Activity>& activity);
  void stopAll();
  /// Stops all that runs; when nothing does, starts again what was started last.
  void startOrStop();

  /// Announces that sign, tip or menu say something else by what happened, not by the time that went by.
  [[nodiscard]] Notifier& changes() { return changes_; }

 private:
  void follow();
  void edit(const QString& name, const std::function<void()>& work);

  Session& session_;
  std::function<QString()> busyWith_;
  Notifier changes_;
  Subscription edits_;
  std::vector<Notifier::Subscription> observations_;
};

}  // namespace pendra
