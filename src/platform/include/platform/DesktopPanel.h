#pragma once
// A desktop may have a panel in which programs show that they are there; it may come and go while they run.

#include <QObject>
#include <memory>

#include "platform/Notifier.h"

class QDBusConnection;

namespace pendra {

/// Says whether the desktop has a panel that takes icons.
class DesktopPanel {
 public:
  virtual ~DesktopPanel() = default;
  [[nodiscard]] virtual bool isThere() const = 0;
  /// Announces that one has come or gone.
  [[nodiscard]] Notifier& changes() { return changes_; }

 private:
  Notifier changes_;
};

/// The panel of the user's session, which makes itself known on its bus.
class SessionPanel final : public DesktopPanel {
 public:
  static std::unique_ptr<SessionPanel> ofUser();
  explicit SessionPanel(const QDBusConnection& session);

  [[nodiscard]] bool isThere() const override { return isThere_; }

 private:
  void set(bool isThere);

  bool isThere_;
  QObject watch_;  ///< owns what watches the bus
};

}  // namespace pendra
