#pragma once

#include <QStringList>

#include "platform/Alerts.h"

/// Where in the help book each window, menu item and alert stands; F1 in it opens the book there.
namespace pendra::help {

inline const QString kTimerWindow = QStringLiteral("timer-window");
inline const QString kTimeLog = QStringLiteral("time-log");
inline const QString kQuickEntry = QStringLiteral("quick-entry");
inline const QString kActivityEditor = QStringLiteral("activity-editor");
inline const QString kTimeEntryEditor = QStringLiteral("time-entry-editor");
inline const QString kSetup = QStringLiteral("setup");
inline const QString kCustomersAndJobs = QStringLiteral("customers-and-jobs");
inline const QString kServiceItems = QStringLiteral("service-items");
inline const QString kSendTime = QStringLiteral("send-time");
inline const QString kCompletedActivities = QStringLiteral("completed-activities");
inline const QString kReport = QStringLiteral("report");
inline const QString kTimeAway = QStringLiteral("time-away");
inline const QString kPreferences = QStringLiteral("preferences");
inline const QString kAbout = QStringLiteral("about");
inline const QString kStartEarlier = QStringLiteral("start-earlier");
inline const QString kWelcome = QStringLiteral("welcome");

/// What the windows' empty states and the alerts point to.
inline const QString kFirstDay = QStringLiteral("first-day");
inline const QString kFirstSending = QStringLiteral("first-sending");
inline const QString kBackups = QStringLiteral("backups");
inline const QString kDeleting = QStringLiteral("deleting");
inline const QString kVantorNotFound = QStringLiteral("vantor-not-found");
inline const QString kHeldBack = QStringLiteral("held-back");
inline const QString kUnknownFate = QStringLiteral("did-it-arrive");

inline const QStringList kAll{kTimerWindow,
                              kQuickEntry,
                              kTimeLog,
                              kActivityEditor,
                              kTimeEntryEditor,
                              kSetup,
                              kCustomersAndJobs,
                              kServiceItems,
                              kSendTime,
                              kReport,
                              kCompletedActivities,
                              kPreferences,
                              kAbout,
                              kWelcome,
                              kFirstDay,
                              kFirstSending,
                              kBackups,
                              kVantorNotFound,
                              kHeldBack,
                              kUnknownFate,
                              kStartEarlier,
                              kTimeAway,
                              kDeleting};

/// Where alerts about that are explained; empty for an alert that says all there is.
[[nodiscard]] QString anchorOf(Alert::Topic topic);
/// A menu item's tag; for one without (0), its English title in small letters with hyphens ("add-activity").
[[nodiscard]] QString anchorOfItem(int tag, const QString& title);

}  // namespace pendra::help
