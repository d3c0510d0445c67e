#include "link/ConnectionChecks.h"

#include "Unreachable.h"
#include "model/Identity.h"
#include "platform/Log.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

const QString kChannelNoticeKey = QStringLiteral("channel");

/// How long the company's name is asked for again, in seconds from the first repeat.
constexpr double kCompanySeconds = 4.0;
/// At once for a person, and little for Vantor.
constexpr std::chrono::milliseconds kBetweenQuestions{100};

}  // namespace

void ConnectionChecks::openConnection() {
  const Ports& ports = session_.ports();
  connection_.reset();  // before the next one binds
  connection_ = VantorConnection::make(ports.places, ports.workspace, connect_);
  tellOfMissingChannel();
}

void ConnectionChecks::tellOfMissingChannel() {
  const QString why = connection_ ? connection_->whyNoChannel() : QString();
  if (why.isEmpty()) return session_.notices().withdraw(kChannelNoticeKey);
  const QString text = formatted(
      tr("Pendra cannot connect to Vantor: %@. Nothing is wrong with Vantor; put this right and try again."),
      {why});
  logLine(text);
  session_.notices().post({.key = kChannelNoticeKey, .text = text, .actions = {}});
}

std::optional<QString> ConnectionChecks::awaitCompany() {
  if (auto company = connection_->companyFileName()) return company;
  const Spinning spinning(progress_, tr("Waiting for a company to be opened in Vantor…"), 0);
  const Clock& clock = session_.ports().clock;
  const Instant first = clock.now();
  while (clock.now() - first < kCompanySeconds && progress_.pause(kBetweenQuestions)) {
    if (auto company = connection_->companyFileName()) return company;
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
    return refuse(tr("Please start Vantor and try again"),
                  tr("You need to have Vantor running to update your lists and submit time."));
  }
  if (!remoteServer().canTalkToPendra()) {
    return refuse(tr("Pendra can’t work with this version of Vantor."),
                  tr("In Vantor, choose Vantor>Check for Vantor Updates to get the latest version."));
  }
  if (!isOfThisDocument(connection_->companyFileName())) {
    return refuse(tr("Please open the correct company and try again"),
                  tr("You need to open a company in Vantor to submit time."));
  }
  return true;
}

bool ConnectionChecks::refuse(const QString& message, const QString& informative) {
  session_.ports().alerts.runAlert({.style = Alert::Style::Warning,
                                    .message = message,
                                    .informative = informative,
                                    .buttons = {tr("OK")},
                                    .topic = Alert::Topic::VantorNotFound});
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
