#include "NameOwnerWatch.h"

namespace pendra {

NameOwnerWatch::NameOwnerWatch(QDBusConnection bus, std::function<void(const QString&)> gained)
    : gained_(std::move(gained)) {
  const QString daemon = QStringLiteral("org.freedesktop.DBus");
  bus.connect(daemon, QStringLiteral("/org/freedesktop/DBus"), daemon, QStringLiteral("NameOwnerChanged"),
              this, SLOT(ownerChanged(QString, QString, QString)));
}

void NameOwnerWatch::ownerChanged(const QString& name, const QString& oldOwner, const QString& newOwner) {
  const bool isWellKnown = !name.startsWith(u':');
  if (isWellKnown && oldOwner.isEmpty() && !newOwner.isEmpty()) gained_(name);
}

}  // namespace pendra
