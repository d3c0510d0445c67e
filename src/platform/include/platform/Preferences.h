#pragma once

#include <QString>

/// The keys of the user's preferences, exactly as they stand in the file.
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
/// Text: after how many minutes without a touch it is asked whether the time counts; "0" for never.
inline const QString kAwayMinutes = QStringLiteral("PendraAwayMinutes");
/// Boolean, false unless written: closing the window hides it where a panel shows Pendra.
inline const QString kKeepInPanel = QStringLiteral("PendraKeepInPanel");
/// Boolean, absent until the user had the desktop ask for a key that starts and stops.
inline const QString kGlobalKey = QStringLiteral("PendraGlobalKey");
/// Path of a copy that was written when a document could not be saved at the end; empty once it was told.
inline const QString kRescued = QStringLiteral("PendraRescued");
/// Path of the folder of the backups that make themselves; empty: the program's own.
inline const QString kBackupFolder = QStringLiteral("PendraBackupFolder");
/// Path of the folder in which a file was chosen last.
inline const QString kLastFolder = QStringLiteral("PendraLastFolder");
/// Texts: how the two tables of the timer window were arranged.
inline const QString kActivityColumns = QStringLiteral("PendraActivityColumns");
inline const QString kLogColumns = QStringLiteral("PendraLogColumns");
/// Where each window stood when it was closed, in a form of the toolkit's.
inline const QString kTimerWindowPlace = QStringLiteral("PendraTimerWindowPlace");
inline const QString kCustomerListPlace = QStringLiteral("PendraCustomerListPlace");
inline const QString kServicesListPlace = QStringLiteral("PendraServicesListPlace");
inline const QString kCompletedPlace = QStringLiteral("PendraCompletedPlace");
inline const QString kReportPlace = QStringLiteral("PendraReportPlace");

}  // namespace pendra::preferences
