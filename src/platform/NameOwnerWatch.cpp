#include "NameOwnerWatch.h"

namespace pendra {

NameOwnerWatch::NameOwnerWatch(QDBusConnection bus, std::function<void(const QString&)> gained)
    : gained_(std::move(gained)) {
  const QString daemon = "org.freedesktop.DBus";
  bus.connect(daemon, "/org/freedesktop/DBus", daemon, "NameOwnerChanged", this,
              SLOT(ownerChanged(QString, QString, QString)));
}

void NameOwnerWatch::ownerChanged(const QString& name, const QString& oldOwner, const QString& newOwner) {
  const bool isWellKnown = !name.startsWith(u':');
  if (isWellKnown && oldOwner.isEmpty() && !newOwner.isEmpty()) gained_(name);
}

}  // namespace pendra
