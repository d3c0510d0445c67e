#include "link/VantorConnection.h"

#include <QDir>

#include "platform/Identifiers.h"
#include "platform/Log.h"
#include "platform/Text.h"

namespace pendra {

std::unique_ptr<VantorConnection> VantorConnection::make(const Places& places, const Workspace& workspace,
                                                         const ConnectToVantor& connect) {
  if (!QDir().mkpath(places.caches)) {
    const QString why = places.caches + u" cannot be made";
    logLine(formatted(u"could not get cache URL: %@", {why}));
    return nullptr;
  }
  const auto socket = [&](QStringView name) -> QString {
    return formatted(u"%@/%@/", {places.caches, identifiers::kPendra}) + name;
  };
  return std::unique_ptr<VantorConnection>(
      new VantorConnection(workspace, connect(socket(u"vtserver.socket"), socket(u"pdclient.socket"))));
}

bool VantorConnection::isVantorRunning() const { return workspace_.isRunning(identifiers::kVantor); }

std::optional<QString> VantorConnection::companyFileName() const {
  return client_ ? client_->companyFileName() : std::nullopt;
}

QStringList VantorConnection::employeeNames() const {
  return client_ ? client_->employeeNames() : QStringList();
}

}  // namespace pendra
