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

}  // namespace pendra::help
