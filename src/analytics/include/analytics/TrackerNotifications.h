#pragma once

#include <QString>

#include "platform/NotificationCenter.h"

/// The notifications that usage statistics listen to. Of a notification's one pair of texts only the first
/// is read.
namespace pendra::tracker_notifications {

/// Something that Pendra itself counts.
inline const QString kTracker = QStringLiteral("TrackerNotification");
/// A window became visible; the text is its title.
inline const QString kWindowDidBecomeVisible = QStringLiteral("_NSWindowDidBecomeVisible");
/// The desktop changed between light and dark.
inline const QString kDarkModeChanged = QStringLiteral("VTDarkModeChanged");

inline const NotificationCenter::UserInfo kAppLaunched{QStringLiteral("Pendra App"),
                                                       QStringLiteral("PENDRA_APP_LAUNCHED")};
inline const NotificationCenter::UserInfo kAddActivity{QStringLiteral("Pendra Add Activity"),
                                                       QStringLiteral("ADD_ACTIVITY")};
/// After this one nothing is sent any more while the program runs.
inline const QString kUpgradeDoNotTrack = QStringLiteral("Upgrade Do Not Track");

}  // namespace pendra::tracker_notifications
