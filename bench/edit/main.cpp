// What a command waits for: starting and stopping, correcting, deleting, each told and on the disk, and
// taking that back, in documents of 60,000 and of 200,000 entries, beside one plain durable commit in the
// same run. A disk must be under the folder for temporary files for this to mean anything.

#include <QFile>
#include <QTemporaryDir>

#include "PlainDocument.h"
#include "Ratio.h"
#include "document/OpenDocument.h"
#include "document/RunningTimers.h"
#include "model/Queries.h"
#include "sample/SampleDocument.h"
#include "store/UndoStack.h"
#include "support/ManualClock.h"
#include "support/TestModel.h"

namespace pendra {
namespace {

constexpr int kTurns = 41;
constexpr double kAimTimes = 1.5;
constexpr double kAimMilliseconds = 5;

class EditBench {
 public:
  explicit EditBench(int entries) : entries_(entries) {
    ObjectContext context(testModel(), clock_, calendar_);
    if (!context.open(path_)) qFatal("no document");
    fillSample(context, {.customers = 300, .activities = 2000, .entries = entries});
    if (!context.save()) qFatal("no sample");
    context.close();
    if (!QFile::copy(path_, plainPath_)) qFatal("no copy");
  }

  void run() {
    std::printf("%d entries\n", entries_);
    auto read = OpenDocument::read(path_, testModel(), clock_, calendar_);
    if (!read) qFatal("not read");
    document_ = std::move(read).value();
    ObjectContext& context = *document_->context();
    // Whoever shows the timers asks these of the document after every edit.
    const auto told = context.observe([&](const ChangeSet& news) {
      for (const TimeEntry* entry : news.changed<TimeEntry>()) runs_ += entry->activity()->isRunning();
      runs_ += isTimeRunning(context);
    });
    plain::Writer writer(plainPath_);
    const auto entries = context.fetch<TimeEntry>();
    Activity& activity = *context.all<Activity>()[7];
    std::size_t next = 0;
    measure(writer, "start or stop",
            [&] { activity.isRunning() ? activity.stop() : void(activity.startEntry()); });
    measure(writer, "correct an entry", [&] {
      entries[next]->setDuration(static_cast<double>(++changes_) + 0.5);
      ++next;
    });
    measure(writer, "delete an entry", [&] { context.deleteObject(*entries[++next]); });
    compare(writer, "take a deletion back", [&] { context.undoStack().undo(); });
    measure(writer, "delete 50 entries", [&] {
      for (int i = 0; i < 50; ++i) context.deleteObject(*entries[entries.size() - ++next]);
    });
  }

 private:
  template <class Work>
  void measure(plain::Writer& writer, const char* name, const Work& work) {
    compare(writer, name, [&] {
      if (!document_->context()->edit(QString::fromUtf8(name), work)) qFatal("no edit");
      if (document_->context()->hasChanges()) qFatal("not stored");
    });
  }

  template <class Work>
  void compare(plain::Writer& writer, const char* name, const Work& work) {
    std::vector<double> processor;
    const auto [ours, plain] = bench::mediansInTurn(
        kTurns, [&] { processor.push_back(bench::processorMillisecondsOf(work)); },
        [&] { writer.commitOne(++changes_); });
    const double aim = kAimTimes * plain + kAimMilliseconds;
    std::printf("  %-22s %8.3f ms, processor %6.3f ms  one commit %8.3f ms  (aim %.3f)%s\n", name, ours,
                bench::median(processor), plain, aim, ours <= aim ? "" : "  MISSED");
  }

  int entries_;
  ManualClock clock_;
  Calendar calendar_{QTimeZone("Europe/Berlin")};
  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("Sample.pdr"));
  QString plainPath_ = folder_.filePath(QStringLiteral("Plain.pdr"));
  std::unique_ptr<OpenDocument> document_;
  int changes_ = 0;
  int runs_ = 0;
};

}  // namespace
}  // namespace pendra

int main() {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  for (const int entries : {60000, 200000}) pendra::EditBench(entries).run();
  return 0;
}
