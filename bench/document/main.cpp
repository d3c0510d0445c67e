// A document of 300 customers and 2,000 open activities, with 60,000 and with 200,000 entries: opening it
// until the window is painted, the tick, a letter in the search of the activities, their reload, a report,
// and a save after one change. A disk must be under the folder for temporary files for the save to mean
// anything.

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <algorithm>
#include <array>

#include "PlainDocument.h"
#include "Ratio.h"
#include "model/DurationText.h"
#include "model/Report.h"
#include "sample/SampleDocument.h"
#include "support/SilentDisplay.h"
#include "support/TestSession.h"
#include "ui/CommandTarget.h"
#include "ui/LogPaneView.h"
#include "ui/Theme.h"
#include "ui/TimerWindowController.h"
#include "ui_core/HoursAtAGlance.h"
#include "ui_core/Menus.h"

namespace pendra {
namespace {

using bench::median;
using bench::millisecondsOf;

constexpr int kTimers = 5;

class NoCommands final : public CommandTarget {
 public:
  [[nodiscard]] std::span<const Menu> menus() const override { return {}; }
  void perform(Command, QWidget*) override {}
  [[nodiscard]] bool isOffered(const CommandRow&) const override { return false; }
  [[nodiscard]] QString whyNot(const CommandRow&) const override { return {}; }
  [[nodiscard]] bool isShown(const CommandRow&) const override { return true; }
  [[nodiscard]] std::optional<bool> isOn(const CommandRow&) const override { return {}; }
  [[nodiscard]] QString titleOf(const CommandRow&) const override { return {}; }
  [[nodiscard]] Notifier& menuChanges() override { return changes_; }
  [[nodiscard]] QStringList recentDocuments() const override { return {}; }
  void openRecent(const QString&) override {}
  void clearRecent() override {}

 private:
  Notifier changes_;
};

class DocumentBench {
 public:
  explicit DocumentBench(int entries) {
    ObjectContext context(testModel(), test_.clock, test_.calendar);
    if (!context.open(path_)) qFatal("no document");
    fillSample(context, {.customers = 300, .activities = 2000, .entries = entries});
    if (!context.save()) qFatal("no sample");
    std::printf("%d entries\n", entries);
  }

  void run() {
    opening();
    loadDocument(test_.session, path_);
    context_ = test_.session.context().get();
    reload();
    saving();
    tick();
    footer();
    report();
    search();
  }

 private:
  void opening() {
    bench::compare(
        "read", 3,
        [&] {
          ObjectContext context(testModel(), test_.clock, test_.calendar);
          if (!context.open(path_)) qFatal("not read");
        },
        [&] { rows_ = plain::readAll(path_); }, 5);
    bench::compare(
        "open until painted", 3, [&] { openWindow(); }, [&] { rows_ = plain::readAll(path_); }, 5);
  }

  /// From the closed document to a window that is painted, and away again.
  void openWindow() {
    TestSession test;
    loadDocument(test.session, path_);
    NoCommands commands;
    TimerWindowController window(test.session, commands, [] {});
    QCoreApplication::processEvents();
    window.close();
  }

  /// A row is six texts, so the plain loop makes those as well; it neither sorts nor compares nor tells
  /// anybody.
  void reload() {
    TimerState state(test_.session, display_);
    const Today today(test_.clock.now(), test_.calendar);
    std::vector<std::array<QString, 6>> shown;
    bench::compare(
        "reload of the activities", 2,
        [&] {
          test_.session.context()->all<Activity>()[0]->setNotes(QString::number(++changes_));
          state.rebuild();
        },
        [&] {
          shown.clear();
          for (const Activity* activity : context_->all<Activity>()) {
            if (activity->completed() != false) continue;
            double total = 0;
            double ofToday = 0;
            for (const TimeEntry* entry : activity->entries()) {
              total += entry->storedDuration();
              if (today.contains(*entry->start())) ofToday += entry->storedDuration();
            }
            shown.push_back({queries::nameOf(activity->customer()), queries::nameOf(activity->job()),
                             queries::nameOf(activity->service()), activity->notes().value_or(QString()),
                             durationText(total), durationText(ofToday)});
          }
        });
  }

  void saving() {
    const QString copy = test_.places.path(QStringLiteral("Plain.pdr"));
    if (!QFile::copy(path_, copy)) qFatal("no copy");
    plain::Writer writer(copy);
    TimeEntry& entry = *context_->all<TimeEntry>()[0];
    bench::compare(
        "save after one change", 1.5,
        [&] {
          entry.setDuration(++changes_);
          if (!context_->save()) qFatal("not saved");
        },
        [&] { writer.commitOne(++changes_); }, 51);
  }

  void tick() {
    TimerState state(test_.session, display_);
    for (int i = 0; i < kTimers; ++i) context_->all<Activity>()[static_cast<std::size_t>(i)]->startEntry();
    state.rebuild();
    std::vector<double> took;
    for (int run = 0; run < 301; ++run) {
      test_.clock.advance(1);
      took.push_back(millisecondsOf([&] { state.updateTimeDisplay(); }));
    }
    std::printf("%-28s %9.4f ms\n", "a tick, five running", median(took));
  }

  /// What the footer adds to a tick; it must not grow with the document.
  void footer() {
    HoursAtAGlance hours(test_.session, QLocale::c());
    std::vector<double> took;
    for (int run = 0; run < 301; ++run) {
      test_.clock.advance(1);
      took.push_back(millisecondsOf([&] { hours.update(); }));
    }
    std::printf("%-28s %9.4f ms\n", "the footer's sums of it", median(took));
  }

  /// A report sums by customer, job and service and by the week of each entry, and so does the plain loop; it
  /// sorts nothing.
  void report() {
    const Instant now = test_.clock.now();
    ReportQuery query{.bars = BarUnit::Week};
    query.range = ReportRange::around(RangeKind::Year, test_.calendar.day(now), Qt::Monday);
    const Days year(query.range.first, query.range.last, test_.calendar);
    constexpr double kWeek = 7 * 24 * 60 * 60;
    QHash<QString, QHash<QString, QHash<QString, Hours>>> sums;
    QHash<QString, std::array<Length, 54>> weeks;
    bench::compare(
        "report of the year", 2, [&] { std::ignore = makeReport(*context_, query, now); },
        [&] {
          sums.clear();
          weeks.clear();
          for (const Activity* activity : context_->all<Activity>()) {
            Hours hours;
            auto& bars = weeks[queries::nameOf(activity->customer())];
            for (const TimeEntry* entry : activity->entries()) {
              if (!year.contain(entry->start())) continue;
              const CountedEntry counted = countedAt(now, *entry);
              hours.add(counted);
              bars[static_cast<std::size_t>((*entry->start() - year.begin()) / kWeek)] += counted.length;
            }
            sums[queries::nameOf(activity->customer())][queries::nameOf(activity->job())]
                [queries::nameOf(activity->service())] += hours;
          }
        });
  }

  /// From a letter to the table that is painted anew.
  void search() {
    NoCommands commands;
    TimerWindowController window(test_.session, commands, [] {});
    auto* field = window.log().window()->findChild<QLineEdit*>(QStringLiteral("activitySearch"));
    QCoreApplication::processEvents();
    std::vector<double> took;
    for (int run = 0; run < 20; ++run) {
      for (const char* typed : {"d", "de", "des", "desi", "de", "d", "zzz", ""}) {
        took.push_back(millisecondsOf([&] {
          field->setText(QString::fromLatin1(typed));
          QCoreApplication::processEvents();
        }));
      }
    }
    std::printf("%-28s %9.4f ms, at most %.4f ms\n", "a letter in the search", median(took),
                *std::max_element(took.begin(), took.end()));
    window.close();
  }

  TestSession test_;
  QString path_ = test_.places.path(QStringLiteral("Sample.pdr"));
  ObjectContext* context_ = nullptr;
  SilentDisplay display_;
  std::vector<plain::Row> rows_;
  int changes_ = 0;
};

}  // namespace
}  // namespace pendra

int main(int argc, char** argv) {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  pendra::Theme::install(application);
  for (const int entries : {60000, 200000}) pendra::DocumentBench(entries).run();
  return 0;
}
