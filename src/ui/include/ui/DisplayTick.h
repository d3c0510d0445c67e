#pragma once
// What is shown moves by itself while time runs, and once more at midnight, when "today" means another day.

#include <QTimer>
#include <QWidget>
#include <functional>

#include "platform/Notifier.h"
#include "store/Observers.h"

namespace pendra {

class Session;

/// Tells a window when to show anew: each second while time runs, else at the next midnight. A window that
/// nobody sees is told nothing, and one that comes to the front at once: what stood still meanwhile, as all
/// does while the machine sleeps, is seen to.
class DisplayTick final : public QObject {
 public:
  /// Goes with the window, or before it. The session must outlive it.
  DisplayTick(Session& session, QWidget& window, std::function<void()> told);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void follow();
  void tell();
  void wait();

  Session& session_;
  QWidget& window_;
  std::function<void()> told_;
  QTimer next_;
  Notifier::Subscription documents_;
  Subscription edits_;
};

}  // namespace pendra
