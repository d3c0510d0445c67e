#include "link/ConnectionChecks.h"

#include "Unreachable.h"
#include "model/Identity.h"

namespace pendra {

void ConnectionChecks::openConnection() {
  const Ports& ports = session_.ports();
  connection_ = VantorConnection::init(ports.places, ports.workspace, connect_);
}

RemoteServer& ConnectionChecks::remoteServer() const {
  static Unreachable nobody;
  RemoteServer* remote = connection_ ? connection_->remoteServer() : nullptr;
  return remote ? *remote : nobody;
}

bool ConnectionChecks::checkCompany() {
  if (!connection_ || !connection_->remoteServer()) openConnection();
  if (!connection_ || !connection_->isVantorRunning()) {
    return refuse(QStringLiteral("Please start Vantor and try again"),
                  QStringLiteral("You need to have Vantor running to update your lists and submit time."));
  }
  if (!remoteServer().canTalkToPendra()) {
    return refuse(
        QStringLiteral("Pendra can’t work with this version of Vantor."),
        QStringLiteral("In Vantor, choose Vantor>Check for Vantor Updates to get the latest version."));
  }
  if (!isOfThisDocument(connection_->getCompanyFileName())) {
    return refuse(QStringLiteral("Please open the correct company and try again"),
                  QStringLiteral("You need to open a company in Vantor to submit time."));
  }
  return true;
}

bool ConnectionChecks::refuse(const QString& message, const QString& informative) {
  session_.ports().alerts.runAlert({.style = Alert::Style::Warning,
                                    .message = message,
                                    .informative = informative,
                                    .buttons = {QStringLiteral("OK")}});
  closeConnection();
  return false;
}

bool ConnectionChecks::isOfThisDocument(const std::optional<QString>& company) const {
  const DocumentSettings* document = session_.settings();
  const Identity* identity = document ? document->identity() : nullptr;
  if (!identity || !identity->companyFileName()) return true;
  return company && lastPathComponent(*company) == lastPathComponent(*identity->companyFileName());
}

QString lastPathComponent(const QString& path) {
  QStringView rest(path);
  while (rest.size() > 1 && rest.endsWith(u'/')) rest.chop(1);
  return rest.size() == 1 ? rest.toString() : rest.sliced(rest.lastIndexOf(u'/') + 1).toString();
}

}  // namespace pendra
