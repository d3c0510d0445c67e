#pragma once

#include <QDBusConnection>
#include <QVariant>
#include <chrono>

#include "Order.h"

namespace pendra {

/// The Pendra that runs already, seen over the session bus. Asking never starts one.
class RunningPendra {
 public:
  explicit RunningPendra(const QDBusConnection& bus) : bus_(bus) {}

  [[nodiscard]] bool isThere() const;
  /// The path of the document that it has open; empty for none.
  [[nodiscard]] Result<QString> document() const;
  /// Has it start, stop, export, back up or send; the answer is that of the command line.
  [[nodiscard]] Result<QVariantMap> obey(const Order& order) const;

  /// Starts the program with a document and waits until it can be asked.
  [[nodiscard]] Result<void> launch(const QString& document) const;

 private:
  [[nodiscard]] Result<QVariant> call(const QString& interface, const QString& member,
                                      const QVariantList& arguments,
                                      std::chrono::seconds patience = std::chrono::seconds(30)) const;

  QDBusConnection bus_;
};

}  // namespace pendra
