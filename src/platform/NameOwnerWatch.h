#pragma once

#include <QDBusConnection>
#include <QObject>
#include <functional>

namespace pendra {

/// Tells the well-known names that gain an owner on a bus, for as long as it lives.
class NameOwnerWatch final : public QObject {
  Q_OBJECT

 public:
  NameOwnerWatch(QDBusConnection bus, std::function<void(const QString& name)> gained);

 private:
  Q_SLOT void ownerChanged(const QString& name, const QString& oldOwner, const QString& newOwner);

  std::function<void(const QString&)> gained_;
};

}  // namespace pendra
