#include "link/ConnectionChecks.h"

#include <QCoreApplication>

#include "Unreachable.h"
#include "model/Identity.h"
#include "platform/Log.h"
#include "platform/Text.h"

namespace pendra {

namespace {

const QString kChannelNoticeKey = QStringLiteral("channel");
/// How long the company's name is asked for again, in seconds from the first repeat.
constexpr double kCompanySeconds = 4.0;
/// Kept: setup asks again at once by its rule; a tenth of a second is at once for a person, and spares
/// Vantor.
constexpr std::chrono::milliseconds kBetweenQuestions{100};

}  // namespace

void ConnectionChecks::openConnection() {
  const Ports& ports = session_.ports();
  connection_.reset();  // before the next one binds
  connection_ = VantorConnection::init(ports.places, ports.workspace, connect_);
  tellOfMissingChannel();
}

void ConnectionChecks::tellOfMissingChannel() {
  const QString why = connection_ ? connection_->whyNoChannel() : QString();
  if (why.isEmpty()) return session_.notices().withdraw(kChannelNoticeKey);
  const QString text = formatted(
      QCoreApplication::translate(
          "ConnectionChecks",
          "Pendra cannot connect to Vantor: %@. Nothing is wrong with Vantor; put this right and try again."),
      {why});
  logLine(text);
  session_.notices().post({.key = kChannelNoticeKey, .text = text, .actions = {}});
}

std::optional<QString> ConnectionChecks::awaitCompany() {
  if (auto company = connection_->getCompanyFileName()) return company;
  const Spinning spinning(
      progress_,
      QCoreApplication::translate("ConnectionChecks", "Waiting for a company to be opened in Vantor…"), 0);
  const Clock& clock = session_.ports().clock;
  const Instant first = clock.now();
  while (clock.now() - first < kCompanySeconds && progress_.pause(kBetweenQuestions)) {
    if (auto company = connection_->getCompanyFileName()) return company;
  }
  return std::nullopt;
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
