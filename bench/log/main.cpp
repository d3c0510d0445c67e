#include <malloc.h>
#include <stdio.h>

#include <QApplication>
#include <QScrollBar>

#include "PlainLog.h"
#include "Ratio.h"
#include "sample/SampleDocument.h"
#include "support/SilentDisplay.h"
#include "support/TestSession.h"
#include "ui/LogPaneView.h"
#include "ui/RowTableView.h"
#include "ui/Theme.h"
#include "ui_core/LogRange.h"
#include "ui_core/TimeLogExport.h"

namespace pendra {
namespace {

constexpr int kRuns = 7;
constexpr std::array kColumns{"customer", "job", "service", "date", "duration", "submitted"};

class NoProgress final : public ExportProgress {
 public:
  bool goOn(std::size_t, std::size_t) override { return true; }
};

/// Bytes in use, those of large blocks too.
std::size_t allocated() {
  const auto info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

/// Compares with an aim of twice the plain code.
template <class Ours, class Plain>
void compare(const char* name, const Ours& ours, const Plain& plain) {
  bench::compare(name, 2, ours, plain, kRuns);
}

class LogBench {
 public:
  explicit LogBench(int entries) : context_(test_.openDocument()), entries_(entries) {
    fillSample(context_,
               {.customers = 200, .jobs = 500, .services = 20, .activities = 400, .entries = entries});
  }

  void run() {
    std::printf("%d entries\n", entries_);
    memory();
    reload();
    sorting();
    tick();
    exporting();
    editing();
    scrolling();
    searching();
  }

 private:
  void memory() {
    const std::size_t before = allocated();
    log_.rebuild();
    const std::size_t after = allocated();
    std::printf("%-28s %9.0f bytes\n", "memory for each row",
                static_cast<double>(after - before) / log_.rows().rowCount());
  }

  void reload() {
    const Calendar& calendar = test_.calendar;
    std::vector<plain::Row> rows;
    log_.rows().sortBy({QStringLiteral("date"), false});
    compare(
        "reload", [&] { log_.rebuild(); },
        [&] {
          rows = plain::rowsOf(context_);
          plain::sortBy(rows, QStringLiteral("date"), calendar);
        });
    log_.reloadNames();
    // One whose name stands for itself alone: in others stars and question marks act.
    const auto isPlain = [](const QString& name) { return !name.contains(u'*') && !name.contains(u'?'); };
    const QStringList names = log_.customerPopup.titles().sliced(1);
    const QString customer = *std::find_if(names.begin(), names.end(), isPlain);
    log_.startDateField = QStringLiteral("1/1/2024");
    log_.endDateField = QStringLiteral("6/30/2026");
    compare(
        "change of filter",
        [&] {
          log_.customerPopup.selectTitle(customer);
          log_.customerPicked(log_.customerPopup);
        },
        [&] {
          // The days are texts of two fields, which whoever filters has to read.
          const auto first = readDateField(log_.startDateField, log_.dayReader());
          const auto last = readDateField(log_.endDateField, log_.dayReader());
          rows = plain::rowsOf(context_, customer, calendar.startOfDay(first->first),
                               calendar.startOfDay(last->last.addDays(1)));
          plain::sortBy(rows, QStringLiteral("date"), calendar);
        });
    if (std::ssize(rows) != log_.rows().rowCount()) qFatal("not the same rows");
    log_.clearFilters();
  }

  void sorting() {
    std::vector<plain::Row> rows = plain::rowsOf(context_);
    for (const char* column : kColumns) {
      const QString key = QString::fromLatin1(column);
      compare(("sort by " + std::string(column)).c_str(),
              [&] {
                log_.rows().sortBy({key, true});
              },
              [&] { plain::sortBy(rows, key, test_.calendar); });
    }
  }

  void tick() {
    context_.all<Activity>()[0]->startEntry();
    log_.rebuild();
    std::vector<double> took;
    for (int run = 0; run < 101; ++run) {
      test_.clock.advance(1);
      took.push_back(bench::millisecondsOf([&] { log_.updateRunningEntries(); }));
    }
    std::printf("%-28s %9.4f ms\n", "a tick, one running", bench::median(took));
    context_.all<Activity>()[0]->stop();
    log_.rebuild();
  }

  void exporting() {
    const QString path = test_.places.path(QStringLiteral("log.txt"));
    NoProgress progress;
    compare(
        "export",
        [&] {
          test_.panels.willChoose(path);
          exportTimeLog(log_, progress);
        },
        [&] { plain::write(path, plain::exported(context_)); });
  }

  /// What the processor does at one edit, told and in the rows.
  void editing() {
    if (!context_.save()) qFatal("not saved");
    log_.rows().sortBy({QStringLiteral("date"), false});
    std::size_t next = 0;
    const auto nextEntry = [&]() -> TimeEntry& { return *context_.all<TimeEntry>()[next += 7]; };
    Activity& activity = *context_.all<Activity>()[3];
    const auto send = [&] { nextEntry().setDateSubmitted(test_.clock.now()); };
    measureEdit("start or stop",
                [&] { activity.isRunning() ? activity.stop() : void(activity.startEntry()); });
    measureEdit("another start of one", [&] { nextEntry().setStart(test_.clock.now()); });
    measureEdit("complete or not", [&] { activity.setCompleted(activity.completed() != true); });
    measureEdit("another service of one", [&] {
      activity.setService(context_.all<Service>()[++next % context_.all<Service>().size()]);
    });
    measureEdit("one sent", send);
    log_.setHidesSubmitted(true);
    measureEdit("one sent, sent ones hidden", send);
    log_.setHidesSubmitted(false);
  }

  template <class Work>
  void measureEdit(const char* name, const Work& work) {
    const double took = bench::medianProcessorMilliseconds(
        21, [&] { std::ignore = context_.edit({}, {.undoable = false}, work); });
    std::printf("%-28s %9.2f ms of the processor\n", name, took);
  }

  /// Each letter of a word with the painting of what it finds, beside a loop that looks at every entry.
  void searching() {
    std::size_t index = 0;
    for (TimeEntry* entry : context_.all<TimeEntry>()) {
      if (++index % 3 == 0)
        entry->setNotes(QStringLiteral("Second draft, pages %1 to %2").arg(index % 97).arg(index % 89));
    }
    LogPaneView pane(test_.session, window_);
    pane.resize(1120, 600);
    pane.show();
    log_.rebuild();
    QImage canvas(pane.table().viewport()->size(), QImage::Format_RGB32);
    std::printf("%-28s %9.2f ms\n", "entering the search",
                bench::millisecondsOf([&] { log_.prepareSearch(); }));
    const QString word = QStringLiteral("draft");
    double longest = 0;
    for (int letters = 1; letters <= word.size(); ++letters) {
      const QString typed = word.first(letters);
      std::size_t found = 0;
      const auto [took, plainly] = bench::mediansInTurn(
          kRuns,
          [&] {
            log_.setSearch(word.first(letters - 1));
            longest = std::max(longest, bench::millisecondsOf([&] {
                                 log_.setSearch(typed);
                                 pane.table().viewport()->render(&canvas);
                               }));
          },
          [&] { found = plain::found(context_, typed).size(); });
      std::printf("%-28s %9.2f ms, plainly %.2f ms, %zu found\n",
                  ("two keystrokes to “" + typed.toStdString() + "”").c_str(), took, plainly, found);
    }
    std::printf("%-28s %9.2f ms (a frame: 16.67)\n", "longest keystroke", longest);
    log_.setSearch({});
  }

  /// Leaps of many pages down to the end, so that every frame paints rows that were never shown before.
  void scrolling() {
    LogPaneView pane(test_.session, window_);
    pane.resize(1120, 600);
    pane.show();
    QCoreApplication::processEvents();
    pane.logController().rebuild();
    pane.table().scrollToBottom();  // which lays the rows out, so that the bar knows how many there are
    QScrollBar& bar = *pane.table().verticalScrollBar();
    const int step = std::max(bar.pageStep(), bar.maximum() / 500);
    QImage canvas(pane.table().viewport()->size(), QImage::Format_RGB32);
    std::vector<double> frames;
    for (int at = 0; at <= bar.maximum(); at += step) {
      frames.push_back(bench::millisecondsOf([&] {
        bar.setValue(at);
        pane.table().viewport()->render(&canvas);
      }));
    }
    std::printf("%-28s %9.2f ms, longest %.2f ms (60 a second: 16.67)\n", "a scrolled page",
                bench::median(frames), *std::max_element(frames.begin(), frames.end()));
  }

  TestSession test_;
  ObjectContext& context_;
  int entries_;
  SilentDisplay display_;
  TimerState window_{test_.session, display_};
  LogController& log_ = window_.log();
};

}  // namespace
}  // namespace pendra

int main(int argc, char** argv) {
  setvbuf(stdout, nullptr, _IOLBF, 0);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  pendra::Theme::install(application);
  for (const int entries : {60000, 200000}) pendra::LogBench(entries).run();
  return 0;
}
