#pragma once

#include <QString>
#include <QStringList>

/// What Pendra is called by others, and what it calls them.
namespace pendra::identifiers {

/// Pendra's own identifier: its name on the session bus, and of its folders.
inline const QString kPendra = QStringLiteral("com.corvel.pendra");
/// Pendra's one object there.
inline const QString kBusObject = QStringLiteral("/com/corvel/pendra");
/// Vantor's identifier on the session bus.
inline const QString kVantor = QStringLiteral("com.vantor.vantor");

/// The form in which users write what they think of Pendra.
inline const QString kFeedbackForm = QStringLiteral("https://feedback.corvel.example/pendra?a=GenNewRecord");
/// Where users help each other.
inline const QString kCommunity = QStringLiteral("https://community.corvel.example/pendra");

/// Names Pendra to the statistics service.
inline const QString kAnalyticsKey = QStringLiteral("3f9d0b6e1c7a48d2a5e0c4b19f6d2e87");
/// Where the statistics page sends its events.
inline const QString kAnalyticsAddress = QStringLiteral("https://statistics.corvel.invalid/2/httpapi");
/// The titles of Vantor's own windows whose opening is counted.
inline const QStringList kAccountingWindows{QStringLiteral("Home Page"),
                                            QStringLiteral("Write Cheques"),
                                            QStringLiteral("Chart of Accounts"),
                                            QStringLiteral("Income and Expense Chart"),
                                            QStringLiteral("Cash Flow Chart"),
                                            QStringLiteral("Profit and Loss Report"),
                                            QStringLiteral("Balance Sheet Report"),
                                            QStringLiteral("Unpaid Invoices Report"),
                                            QStringLiteral("Time by Job Report")};

}  // namespace pendra::identifiers
