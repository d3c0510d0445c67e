#pragma once

#include <QVariant>
#include <functional>

#include "Order.h"
#include "document/Session.h"
#include "platform/BusInterface.h"

namespace pendra {

/// "com.corvel.pendra.Terminal1": lets a terminal have its command obeyed by the program that runs, and
/// prints what is answered. What it says and does is what it would without; this way it needs to load next to
/// nothing.
class TerminalInterface final : public BusInterface {
 public:
  /// `busyWith` says why nothing may be changed now; empty when it may. Both must outlive it.
  TerminalInterface(Session& session, std::function<QString()> busyWith);

  [[nodiscard]] QString introspection() const override;
  [[nodiscard]] bool answer(const QDBusMessage& call, const QDBusConnection& bus) override;

 private:
  [[nodiscard]] Result<QVariant> obey(const Order& order) const;

  Session& session_;
  std::function<QString()> busyWith_;
};

}  // namespace pendra
