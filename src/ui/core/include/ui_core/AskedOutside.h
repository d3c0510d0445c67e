#pragma once

#include <QTimer>
#include <functional>

#include "document/Session.h"
#include "platform/DesktopNotes.h"

namespace pendra {

/// Has the desktop tell what is asked while the user looks at no window of the program: each thing once, and
/// only until it is answered or seen.
class AskedOutside {
 public:
  struct World {
    std::function<bool()> isSeen;       ///< whether a window of the program is in front
    std::function<void()> open;         ///< brings the windows to the front
    std::function<QString()> busyWith;  ///< why nothing may be changed now; empty when it may
  };
  /// All must outlive it. A window that is just coming to the front has until `patience` is over.
  AskedOutside(Session& session, DesktopNotes& notes, World world,
               std::chrono::milliseconds patience = std::chrono::seconds(1));
  ~AskedOutside();

  /// A window is in front, in which everything is to be seen.
  void seen();

 private:
  void look();
  void withdrawAnswered();
  void press(const QString& key, int action);

  Session& session_;
  DesktopNotes& notes_;
  World world_;
  std::vector<DesktopNote> told_;
  QTimer looks_;
  Notifier::Subscription changes_;
};

}  // namespace pendra
