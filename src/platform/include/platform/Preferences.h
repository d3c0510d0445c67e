#pragma once

#include <QString>
#include <QTime>

#include "platform/UserDefaults.h"

/// The keys of the user's preferences, exactly as they stand in the file, and what holds for those that were
/// never written.
namespace pendra::preferences {

/// Path of the document to open at launch; an empty text counts as absent.
inline const QString kLastDocument = QStringLiteral("PendraLastURL");
/// Boolean: merge a day's entries of one activity into one record. True after each launch.
inline const QString kMergeSubmissions = QStringLiteral("PendraMergeSubmissions");
/// Boolean, false unless written: the time log leaves out sent entries.
inline const QString kHideSubmitted = QStringLiteral("PendraHideSubmitted");
/// Boolean, false unless written: the user has found that notes cells can be edited.
inline const QString kUserFoundTableEdit = QStringLiteral("PendraUserFoundTableEdit");
/// Text, absent unless the warning was shown, then "YES". Kept for what reads the settings: the blank.
inline const QString kNoteLengthWarning = QStringLiteral(" PendraNoteLengthWarning");
/// Read by the timer window and not used.
inline const QString kSortOrderWindow = QStringLiteral("sortOrderCorvelWindow");
/// Boolean, absent unless written: false switches usage statistics off.
inline const QString kAnalyticsTracker = QStringLiteral("VTAnalyticsTracker");
/// Text, absent until the user was told of usage statistics: "shown", then "answered".
inline const QString kStatisticsNotice = QStringLiteral("PendraStatisticsNotice");
/// Boolean, absent until the first timer window has introduced the program.
inline const QString kIntroduced = QStringLiteral("PendraIntroduced");
/// Paths of the documents that were open, newest first.
inline const QString kRecentDocuments = QStringLiteral("PendraRecentDocuments");
/// Boolean, false unless written: closing the window hides it where a panel shows Pendra.
inline const QString kKeepInPanel = QStringLiteral("PendraKeepInPanel");
/// Boolean, absent until the user had the desktop ask for a key that starts and stops.
inline const QString kGlobalKey = QStringLiteral("PendraGlobalKey");
/// Path of a copy that was written when a document could not be saved at the end; empty once it was told.
inline const QString kRescued = QStringLiteral("PendraRescued");
/// Text: what the next launch tells of an end that asked nobody; empty once it was told.
inline const QString kUnaskedEnd = QStringLiteral("PendraUnaskedEnd");
/// Path of the folder of the backups that make themselves; empty: the program's own.
inline const QString kBackupFolder = QStringLiteral("PendraBackupFolder");
/// Path of the folder in which a file was chosen last.
inline const QString kLastFolder = QStringLiteral("PendraLastFolder");
/// Texts: how the two tables of the timer window were arranged.
inline const QString kActivityColumns = QStringLiteral("PendraActivityColumns");
inline const QString kLogColumns = QStringLiteral("PendraLogColumns");
/// Text: the day with which a week begins, from "1" for Monday; absent: the region's own.
inline const QString kWeekBegins = QStringLiteral("PendraWeekBegins");
/// Text: "light" or "dark" whatever the desktop wears; absent or anything else: as the desktop.
inline const QString kAppearance = QStringLiteral("PendraAppearance");
/// Where each window stood when it was closed, in a form of the toolkit's.
inline const QString kTimerWindowPlace = QStringLiteral("PendraTimerWindowPlace");
inline const QString kCustomerListPlace = QStringLiteral("PendraCustomerListPlace");
inline const QString kServicesListPlace = QStringLiteral("PendraServicesListPlace");
inline const QString kCompletedPlace = QStringLiteral("PendraCompletedPlace");
inline const QString kReportPlace = QStringLiteral("PendraReportPlace");

/// A switch, and how it stands as long as nobody has touched it.
struct Switch {
  QString key;
  bool byDefault = false;

  [[nodiscard]] bool isOn(const UserDefaults& defaults) const {
    return defaults.contains(key) ? defaults.boolean(key) : byDefault;
  }
};
/// A number that a person types, kept as a text; what is no such number is as if it were not there.
struct Number {
  QString key;
  int byDefault;
  int most;

  [[nodiscard]] int of(const UserDefaults& defaults) const {
    bool isNumber = false;
    const int number = defaults.text(key).value_or(QString()).toInt(&isNumber);
    return isNumber && number >= 0 && number <= most ? number : byDefault;
  }
  void set(UserDefaults& defaults, int number) const { defaults.setText(key, QString::number(number)); }
};
/// A time of day, kept as "9:00".
struct TimeOfDay {
  QString key;
  QTime byDefault;

  [[nodiscard]] static QTime read(const QString& text) {
    return QTime::fromString(text.trimmed(), QStringLiteral("H:m"));
  }
  [[nodiscard]] static QString textOf(QTime time) { return time.toString(QStringLiteral("H:mm")); }
  [[nodiscard]] QTime of(const UserDefaults& defaults) const {
    const QTime time = read(defaults.text(key).value_or(QString()));
    return time.isValid() ? time : byDefault;
  }
};

/// Starting an activity stops the others.
inline const Switch kOneAtATime{QStringLiteral("PendraOneAtATime"), false};
/// After how many minutes without a touch it is asked whether the time counts; 0 for never.
inline const Number kAwayMinutes{QStringLiteral("PendraAwayMinutes"), 10, 240};
/// Reminds on a working day when nothing has run for so many minutes, between two times of day.
inline const Switch kReminder{QStringLiteral("PendraReminder"), false};
inline const Number kRemindMinutes{QStringLiteral("PendraRemindMinutes"), 15, 240};
inline const TimeOfDay kRemindFrom{QStringLiteral("PendraRemindFrom"), QTime(9, 0)};
inline const TimeOfDay kRemindUntil{QStringLiteral("PendraRemindUntil"), QTime(17, 0)};
/// A backup makes itself on every day that changed something, and when a document closes.
inline const Switch kDailyBackups{QStringLiteral("PendraDailyBackups"), true};

}  // namespace pendra::preferences
