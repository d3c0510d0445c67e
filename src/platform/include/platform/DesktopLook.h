#pragma once
// What the user has chosen for the whole desktop. Toolkits know some of it on some desktops; the desktop
// portal tells all of it on all that have one.

#include <QtGlobal>
#include <future>
#include <memory>
#include <optional>

#include "platform/Notifier.h"

class QDBusConnection;
class QDBusMessage;

namespace pendra {

/// How the desktop looks. What it does not say is none.
struct Wishes {
  std::optional<bool> isDark{};
  std::optional<quint32> accent{};  ///< red, green and blue, a byte each
  bool highContrast = false;
  bool lessMotion = false;
  std::optional<double> textScale{};  ///< how many times as large as usual its letters are
  friend bool operator==(const Wishes&, const Wishes&) = default;
};

/// Says how the desktop looks.
class DesktopLook {
 public:
  virtual ~DesktopLook() = default;
  [[nodiscard]] const Wishes& look() const { return look_; }
  /// Announces that it looks otherwise.
  [[nodiscard]] Notifier& changes() { return changes_; }

 protected:
  void set(const Wishes& look);

 private:
  Wishes look_;
  Notifier changes_;
};

class LookSettings;

/// The portal of the user's session. Where it runs already its answer is waited for a moment, so that the
/// first window has the right look; without one nothing is ever said.
class PortalLook final : public DesktopLook {
 public:
  using Asking = std::future<std::shared_ptr<const QDBusMessage>>;
  /// Connects to the user's session and asks on a thread of its own, while the program goes on.
  [[nodiscard]] static Asking askForUser();
  /// Waits for that answer.
  static std::unique_ptr<PortalLook> ofUser(Asking asking);
  explicit PortalLook(const QDBusConnection& session);
  ~PortalLook() override;

 private:
  friend class LookSettings;
  PortalLook(const QDBusConnection& session, const QDBusMessage& reply);

  std::unique_ptr<LookSettings> settings_;
};

}  // namespace pendra
