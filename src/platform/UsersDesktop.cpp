// Apart from the rest of the workspace: only this needs the libraries of a program with windows.

#include <QDBusConnection>
#include <QDesktopServices>
#include <QStandardPaths>
#include <QUrl>

#include "platform/DesktopWorkspace.h"

namespace pendra {

std::unique_ptr<DesktopWorkspace> DesktopWorkspace::ofUser() {
  return std::make_unique<DesktopWorkspace>(
      QDBusConnection::sessionBus(), QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation),
      [](const QString& address) { return QDesktopServices::openUrl(QUrl(address)); });
}

}  // namespace pendra
