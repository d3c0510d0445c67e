#include "ui_core/HelpAnchors.h"

#include <QHash>

namespace pendra::help {

std::optional<QString> anchorOfWindow(const QString& title) {
  static const QHash<QString, QString> kAnchors{
      {QStringLiteral("Set Up Pendra"), kSetup},
      {QStringLiteral("Customers and Jobs"), kCustomersAndJobs},
      {QStringLiteral("Service Items"), kServiceItems},
      {QStringLiteral("Preferences"), kPreferences},
      {QStringLiteral("About Pendra"), kAbout},
      {QStringLiteral("Welcome to Pendra"), kWelcome},
      {QStringLiteral("Add Activity"), kActivityEditor},
      {QStringLiteral("Edit Activity"), kActivityEditor},
      {QStringLiteral("Edit Time Entry"), kTimeEntryEditor},
      {QStringLiteral("Send Time"), kSendTime},
      {QStringLiteral("Your First Timer"), kFirstDay},
  };
  const auto known = kAnchors.constFind(title);
  return known == kAnchors.constEnd() ? std::nullopt : std::optional(*known);
}

std::optional<QString> anchorOfAlert(const QString& message) {
  static const std::vector<std::pair<QString, QString>> kBeginnings{
      {QStringLiteral("Please start Vantor"), kVantorNotFound},
      {QStringLiteral("Pendra can’t work with this version"), kVantorNotFound},
      {QStringLiteral("Please open the correct company"), kVantorNotFound},
      {QStringLiteral("A customer, job, or service "), kHeldBack},
      {QStringLiteral("Did the time for "), kUnknownFate},
      {QStringLiteral("Time Sent"), kFirstSending},
  };
  for (const auto& [beginning, anchor] : kBeginnings) {
    if (message.startsWith(beginning)) return anchor;
  }
  return std::nullopt;
}

QString anchorOfItem(int tag, const QString& title) {
  if (tag != 0) return QString::number(tag);
  return QString(title).remove(u'…').toLower().replace(u' ', u'-');
}

}  // namespace pendra::help
