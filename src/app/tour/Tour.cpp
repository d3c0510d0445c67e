#include "Tour.h"

#include <QApplication>
#include <QLocale>
#include <QLoggingCategory>
#include <QRadioButton>
#include <QTabBar>

#include "Album.h"
#include "Day.h"
#include "Stage.h"
#include "document/Backups.h"
#include "document/TimeAway.h"
#include "link/SubmissionRows.h"
#include "ui/LogPaneView.h"
#include "ui/RowTableView.h"
#include "ui/SendTimeSheet.h"
#include "ui/TimerWindowController.h"
#include "ui_core/LogSubmissionRows.h"

namespace pendra {

namespace {

constexpr double kRunning = 47 * 60 + 12;
constexpr QSize kTimerWindow(1024, 640);  // smaller than at first, to be read in a page
/// Somebody's work of some weeks.
const SampleOptions kWork{
    .customers = 10, .jobs = 10, .services = 7, .activities = 6, .entries = 240, .seed = 4, .everyday = true};
constexpr QSize kRoomyWindow(1120, 760);  // whatever the room of a screen that nobody sees

/// What a window of its own is called in the menus and in its title, and what its picture is called.
struct WindowOfItsOwn {
  Command command;
  QString title;
  QString picture;
};

const std::initializer_list<WindowOfItsOwn> kWindows{
    {Command::CustomerList, QStringLiteral("Customers and Jobs"), QStringLiteral("customers-and-jobs")},
    {Command::ServicesList, QStringLiteral("Service Items"), QStringLiteral("service-items")},
    {Command::CompletedActivities, QStringLiteral("Completed Activities"),
     QStringLiteral("completed-activities")},
    {Command::Report, QStringLiteral("Report"), QStringLiteral("report")},
    {Command::Preferences, QStringLiteral("Preferences"), QStringLiteral("preferences")},
    {Command::Welcome, QStringLiteral("Welcome to Pendra"), QStringLiteral("welcome")},
    {Command::About, QStringLiteral("About Pendra"), QStringLiteral("about")},
};

/// Makes favourites of the first and the third activity and starts their timers; the first stays selected.
void startTwoTimers(Stage& stage) {
  TimerWindowController& timer = stage.timer();
  QWidget& window = *timer.log().window();
  auto& activities = *window.findChild<RowTableView*>(QStringLiteral("activityTable"));
  for (const int row : {0, 2}) {
    activities.selectRow(row);
    timer.state().toggleFavourite();
  }
  for (const int row : {1, 0}) {
    activities.selectRow(row);
    timer.state().toggleTimer();
    stage.advance(kRunning);
  }
  timer.state().updateTimeDisplay();
  window.setFocus();
}

void drawFirstRun(Album& album) {
  const Stage stage(std::nullopt);
  QWidget& setup = windowTitled(QStringLiteral("Set Up Pendra"));
  setup.findChildren<QRadioButton*>().back()->click();  // there is no Vantor here to be linked to
  album.take(QStringLiteral("setup"), setup);
}

void drawEmptyDocument(Album& album) {
  Stage stage(SampleOptions{.activities = 0, .entries = 0, .standalone = true});
  QWidget& window = *stage.timer().log().window();
  window.resize(kRoomyWindow);
  album.take(QStringLiteral("timer-window-empty"), window);
}

void drawSheets(Album& album, Stage& stage) {
  TimerWindowController& timer = stage.timer();
  LogPaneView& log = timer.log();
  album.takeSheet(QStringLiteral("activity-editor"), [&] { timer.editActivity(); });
  log.table().selectRow(3);
  album.takeSheet(QStringLiteral("time-entry-editor"), [&] { timer.editTimeEntry(); });
  log.table().clearSelection();
  SendTimeSheet summary(stage.modals(), log.window());
  const Session& session = timer.state().session();
  Summary shown =
      summaryOf(LogSubmissionRows(log.logController()), *session.context(), session.ports().calendar, true);
  album.takeSheet(QStringLiteral("send-time"),
                  [&] { std::ignore = summary.run(shown, [&] { return shown; }); });
}

/// A week in which somebody worked an hour on two days, made the list of customers up to date, and sent
/// something.
void drawRestore(Album& album) {
  Stage stage(kWork);
  constexpr double kDay = 86'400;
  stage.advance(-4 * kDay - 2 * kDay / 12);  // so that the last of these moments is today's
  ObjectContext& context = *stage.session().context();
  for (const BackupReason reason : {BackupReason::Daily, BackupReason::Daily, BackupReason::UpdatingLists,
                                    BackupReason::Restoring, BackupReason::Daily, BackupReason::Daily}) {
    const TimeEntry* sent = nullptr;
    std::ignore = context.edit({}, {.undoable = false}, [&] {
      TimeEntry& entry = context.all<Activity>()[0]->addEntry();
      entry.setDuration(3600);
      for (TimeEntry* one : context.all<TimeEntry>()) {
        if (!sent && !one->timeIsFixed() && one != &entry)
          (sent = one, one)->setDateSubmitted(context.clock().now());
      }
    });
    std::ignore = makeBackup(stage.session(), reason);
    stage.advance(reason == BackupReason::Daily ? kDay : kDay / 12);
  }
  stage.perform(Command::Restore);
  QWidget& window = windowTitled(QStringLiteral("Restore"));
  window.findChild<RowTableView*>(QStringLiteral("backups"))->selectRow(3);
  for (int row = 0; row < 10; ++row) QCoreApplication::processEvents();  // one is looked up in each
  album.take(QStringLiteral("restore"), window);
}

/// The pages of the preferences, each by its name.
void drawPreferences(Album& album) {
  QWidget& window = windowTitled(QStringLiteral("Preferences"));
  auto& tabs = *window.findChild<QTabBar*>(QStringLiteral("tabs"));
  for (int page = 1; page < tabs.count(); ++page) {
    tabs.setCurrentIndex(page);
    album.take(QStringLiteral("preferences-") + tabs.tabText(page).toLower(), window);
  }
}

/// One of the entries ran while nobody was there.
void drawTimeAway(Album& album, Stage& stage) {
  const Session& session = stage.timer().state().session();
  TimeEntry* entry = session.context()->flagged<TimeEntry>("running")[0];
  const Instant from = *entry->start() + kRunning / 4;
  markAway(*session.context(), {entry}, {from, from + kRunning / 2});
  session.ports().windows.show(WindowKind::TimeAway);
  album.take(QStringLiteral("time-away"), windowTitled(QStringLiteral("Time Away")));
}

void drawWork(Album& album) {
  Stage stage(kWork);
  startTwoTimers(stage);
  stage.timer().log().window()->resize(kTimerWindow);
  album.take(QStringLiteral("timer-window"), *stage.timer().log().window());
  drawSheets(album, stage);
  for (const WindowOfItsOwn& each : kWindows) {
    stage.perform(each.command);
    QWidget& window = windowTitled(each.title);
    if (each.command == Command::Report) window.resize(kRoomyWindow);
    album.take(each.picture, window);
  }
  drawPreferences(album);
  stage.timer().state().selection().selectRow(2);  // the first that stands
  album.takeSheet(QStringLiteral("start-earlier"), [&] { stage.perform(Command::StartEarlier); });
  drawTimeAway(album, stage);
}

}  // namespace

bool drawTour(const QString& folder) {
  if (!QDir().mkpath(folder)) return false;
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
  // The platform without a display mentions whatever it cannot do with a window.
  QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
  qputenv("PENDRA_ANALYTICS_ADDRESS", "");
  Album album(folder);
  drawFirstRun(album);
  drawEmptyDocument(album);
  drawWork(album);
  drawRestore(album);
  return drawDay(album) && album.isComplete();
}

}  // namespace pendra
