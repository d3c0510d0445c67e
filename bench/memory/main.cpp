// What a document costs in memory: private memory of a process that does nothing but open it, with 60,000 and
// with 200,000 entries, beside the size of the file; and what a step that can be taken back keeps.

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>

#include "document/OpenDocument.h"
#include "model/Queries.h"
#include "sample/SampleDocument.h"
#include "store/UndoStack.h"
#include "support/ManualClock.h"
#include "support/TestModel.h"

namespace pendra {
namespace {

constexpr double kMiB = 1024.0 * 1024;
constexpr double kKiB = 1024.0;

/// What only this process holds, in bytes.
double privateMemory() {
  malloc_trim(0);
  QFile rollup(QStringLiteral("/proc/self/smaps_rollup"));
  if (!rollup.open(QIODevice::ReadOnly)) qFatal("no account of the memory");
  double sum = 0;
  for (const QByteArray& line : rollup.readAll().split('\n')) {
    if (line.startsWith("Private_")) sum += line.simplified().split(' ').at(1).toDouble() * kKiB;
  }
  return sum;
}

double allocated() {
  const struct mallinfo2 heap = mallinfo2();
  return static_cast<double>(heap.uordblks + heap.hblkhd);
}

/// In a process of its own, so that nothing of before is in the figures.
template <class Work>
void apart(const Work& work) {
  std::fflush(stdout);
  const pid_t child = ::fork();
  if (child == 0) {
    work();
    std::fflush(stdout);
    ::_exit(0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  if (status != 0) qFatal("the measure has failed");
}

void report(const char* name, double value, const char* unit, double aim) {
  std::printf("  %-36s %8.2f %s  (aim %.0f)%s\n", name, value, unit, aim, value <= aim ? "" : "  MISSED");
}

class MemoryBench {
 public:
  MemoryBench(int entries, double aim) : entries_(entries), aim_(aim) {}

  void run() {
    apart([&] { makeSample(); });
    std::printf("%d entries, a file of %.1f MiB\n", entries_,
                static_cast<double>(QFileInfo(path_).size()) / kMiB);
    apart([&] { measureDocument(); });
    apart([&] { measureSteps(); });
  }

 private:
  void makeSample() {
    ObjectContext context(testModel(), clock_, calendar_);
    if (!context.open(path_)) qFatal("no document");
    fillSample(context, {.customers = 300, .activities = 2000, .entries = entries_});
    if (!context.save()) qFatal("no sample");
  }

  std::unique_ptr<OpenDocument> open() {
    auto read = OpenDocument::read(path_, testModel(), clock_, calendar_);
    if (!read) qFatal("not read");
    return std::move(read).value();
  }

  void measureDocument() {
    {
      const auto warm =
          OpenDocument::read(folder_.filePath(QStringLiteral("None.pdr")), testModel(), clock_, calendar_);
    }
    const double before = privateMemory();
    const double heap = allocated();
    const auto document = open();
    const double bytes = allocated() - heap;
    report("the open document", (privateMemory() - before) / kMiB, "MiB", aim_);
    std::printf("  %-36s %8.1f bytes of the heap\n", "for each entry", bytes / entries_);
  }

  void measureSteps() {
    const auto document = open();
    ObjectContext& context = *document->context();
    const auto entries = context.fetch<TimeEntry>();
    const auto edit = [&](const std::function<void()>& work) {
      if (!context.edit(QStringLiteral("Step"), work)) qFatal("no edit");
    };
    const auto freed = [&] {
      const double heap = allocated();
      context.undoStack().clear();
      return heap - allocated();
    };
    for (std::size_t step = 0; step < kSteps; ++step) {
      edit([&] { entries[step]->setDuration(7 + static_cast<double>(step)); });
    }
    report("a step that changes an entry", freed() / kKiB / kSteps, "KiB", 1);
    for (std::size_t step = 0; step < kSteps; ++step) edit([&] { context.deleteObject(*entries[step]); });
    report("a step that deletes an entry", freed() / kKiB / kSteps, "KiB", 1);
    edit([&] {
      for (std::size_t i = kSteps; i < kSteps + kDeleted; ++i) context.deleteObject(*entries[i]);
    });
    report("a step that deletes 10,000", freed() / kMiB, "MiB", 5);
  }

  static constexpr std::size_t kSteps = 20;
  static constexpr std::size_t kDeleted = 10000;

  int entries_;
  double aim_;
  ManualClock clock_;
  Calendar calendar_{QTimeZone("Europe/Berlin")};
  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("Sample.pdr"));
};

}  // namespace
}  // namespace pendra

int main() {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  pendra::MemoryBench(60000, 22).run();
  pendra::MemoryBench(200000, 55).run();
  return 0;
}
