#pragma once

#include <QString>
#include <functional>

class QDBusConnection;
class QDBusMessage;

namespace pendra {

/// An interface of the program's one object on the session bus, beside those of the desktop.
class BusInterface {
 public:
  virtual ~BusInterface() = default;

  /// Its description, an element "interface".
  [[nodiscard]] virtual QString introspection() const = 0;
  /// Answers a call of a method, or of a property; false where it has none of that kind.
  [[nodiscard]] virtual bool answer(const QDBusMessage& call, const QDBusConnection& bus) = 0;

  /// Given by whoever has the bus: sends a message of this object's.
  std::function<void(const QDBusMessage&)> send = [](const QDBusMessage&) {};
};

}  // namespace pendra
