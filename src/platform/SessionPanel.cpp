#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusServiceWatcher>

#include "platform/DesktopPanel.h"

namespace pendra {

namespace {

const QString kWatcher = QStringLiteral("org.kde.StatusNotifierWatcher");

bool isOn(const QDBusConnection& session) {
  return session.isConnected() && session.interface()->isServiceRegistered(kWatcher).value();
}

}  // namespace

std::unique_ptr<SessionPanel> SessionPanel::ofUser() {
  return std::make_unique<SessionPanel>(QDBusConnection::sessionBus());
}

SessionPanel::SessionPanel(const QDBusConnection& session) : isThere_(isOn(session)) {
  auto* names = new QDBusServiceWatcher(kWatcher, session, QDBusServiceWatcher::WatchForOwnerChange, &watch_);
  QObject::connect(names, &QDBusServiceWatcher::serviceOwnerChanged, &watch_,
                   [this](const QString&, const QString&, const QString& owner) { set(!owner.isEmpty()); });
}

void SessionPanel::set(bool isThere) {
  if (isThere == isThere_) return;
  isThere_ = isThere;
  changes().changed();
}

}  // namespace pendra
