#pragma once
// A key that acts whatever window is in front belongs to the desktop: its user chooses it there, and can take
// it away again. No program can take one.

#include <QString>
#include <memory>

#include "platform/Notifier.h"

class QDBusConnection;

namespace pendra {

/// The one key of the program that acts from everywhere, where the desktop has such keys.
class GlobalKey {
 public:
  virtual ~GlobalKey() = default;
  /// Whether a key can be chosen at all.
  [[nodiscard]] virtual bool isOffered() const = 0;
  /// Has the desktop ask for the key, or take it up again that was chosen before. The user reads what it
  /// does.
  virtual void choose(const QString& whatItDoes) = 0;
  /// Announces that keys are offered now, or no longer.
  [[nodiscard]] Notifier& changes() { return changes_; }
  /// Announces each press.
  [[nodiscard]] Notifier& presses() { return presses_; }

 private:
  Notifier changes_;
  Notifier presses_;
};

class KeySession;

/// The desktop portal's key; without a portal that has some, none is offered.
class PortalKey final : public GlobalKey {
 public:
  static std::unique_ptr<PortalKey> ofUser();
  explicit PortalKey(const QDBusConnection& session);
  ~PortalKey() override;

  [[nodiscard]] bool isOffered() const override { return isOffered_; }
  void choose(const QString& whatItDoes) override;

 private:
  friend class KeySession;
  bool isOffered_ = false;
  std::unique_ptr<KeySession> keys_;
};

}  // namespace pendra
