// Sending 200 entries one by one, against the least that it can be: as many calls of the same size, and as
// many durable commits of one changed row. A slow disk takes 20 ms for each.

#include <SQLiteCpp/SQLiteCpp.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Desk.h"
#include "Measures.h"
#include "Ratio.h"
#include "channel/CallingEnd.h"
#include "channel/ServingEnd.h"
#include "document/DocumentLoading.h"
#include "link/ChannelServer.h"
#include "link/Sending.h"
#include "link/TimeRecord.h"
#include "model/Queries.h"
#include "platform/Preferences.h"

namespace pendra::bench {
namespace {

constexpr int kEntries = 200;
constexpr int kTurns = 3;

/// Takes every record and has empty lists to give.
ArchiveValue perform(const Operation& operation, const ArchiveValue::Array&) {
  if (operation.name == operations::kCompanyFileName.name) return {};
  return QStringLiteral("yes");
}

/// Vantor in a process of its own, until the end of the scope.
class Serving {
 public:
  explicit Serving(const QString& path) {
    std::array<int, 2> ready{};
    if (::pipe(ready.data()) != 0) std::abort();
    process_ = ::fork();
    if (process_ == 0) serve(path, ready[1]);
    char byte = 0;
    if (::read(ready[0], &byte, 1) != 1) std::abort();
  }
  ~Serving() {
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
  }
  Q_DISABLE_COPY_MOVE(Serving)

 private:
  [[noreturn]] static void serve(const QString& path, int ready) {
    auto made = ServingEnd::bound(path, perform);
    if (!made || ::write(ready, "r", 1) != 1) ::_exit(1);
    for (;;) {
      pollfd one{.fd = made.value()->descriptor(), .events = POLLIN, .revents = 0};
      ::poll(&one, 1, -1);
      made.value()->serveInput();
    }
  }

  pid_t process_ = -1;
};

void fill(Session& session) {
  ObjectContext& context = *session.context();
  auto& customer = context.insert<Customer>();
  customer.setVtObjectID(QStringLiteral("c1"));
  auto& service = context.insert<Service>();
  service.setVtObjectID(QStringLiteral("s1"));
  auto& activity = context.insert<Activity>();
  activity.setCustomer(&customer);
  activity.setService(&service);
  activity.setNotes(QStringLiteral("Measure on site; bring the laser"));
  for (int i = 0; i < kEntries; ++i) activity.addEntry().setDuration(60.0 * i);
}

void callBarely(const Places& places, const QString& record) {
  const QString folder = places.caches + u'/' + identifiers::kPendra;
  auto made = CallingEnd::bound(folder + u"/vtserver.socket", folder + u"/pdclient.socket");
  if (!made) std::abort();
  const Call call{.operation = &operations::kSubmitTime, .arguments = ArchiveValue::Array(1, record)};
  for (int i = 0; i < kEntries; ++i) (void)made.value()->call(call);
}

/// As many durable commits of one row, in a file with the document's own settings and table.
class Commits {
 public:
  explicit Commits(const QString& path)
      : database_(path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE) {
    database_.exec("PRAGMA journal_mode=DELETE");
    database_.exec("PRAGMA synchronous=FULL");
    database_.exec(modelOfDocuments().schema.toStdString());
    SQLite::Transaction transaction(database_);
    for (int i = 0; i < kEntries; ++i)
      database_.exec("INSERT INTO TimePeriod (start, duration, dateSubmitted) VALUES (1, 2, 3)");
    transaction.commit();
  }
  void commit() {
    SQLite::Statement update(database_, "UPDATE TimePeriod SET dateSubmitted=dateSubmitted+1 WHERE id=?");
    for (int i = 1; i <= kEntries; ++i) {
      SQLite::Transaction transaction(database_, SQLite::TransactionBehavior::IMMEDIATE);
      update.reset();
      update.bind(1, i);
      update.exec();
      transaction.commit();
    }
  }

 private:
  SQLite::Database database_;
};

}  // namespace

void measureSending() {
  Desk desk;
  QDir().mkpath(desk.places.caches);
  const Serving serving(desk.places.caches + u'/' + identifiers::kPendra + u"/vtserver.socket");
  desk.defaults.setBoolean(preferences::kMergeSubmissions, false);
  loadDocument(desk.session, desk.places.documents + u"/bench.pdr");
  fill(desk.session);
  ConnectionChecks checks(desk.session, connectOverChannel(), desk.progress);
  ObjectContext& context = *desk.session.context();
  std::vector<SubmissionRow> rows;
  for (TimeEntry* entry : context.all<TimeEntry>())
    rows.push_back({entry, entry->activity(), QStringLiteral("Acme"), {}, QStringLiteral("Design")});
  const TimeEntry& sample = *context.all<TimeEntry>()[kEntries / 2];
  const QString record = kTimeRecordDeclaration + timeRecord(*sample.activity(), sample, nullptr);
  Commits commits(desk.places.documents + u"/plain.sqlite");

  std::vector<double> sending;
  std::vector<double> calling;
  std::vector<double> committing;
  for (int turn = 0; turn < kTurns; ++turn) {
    for (TimeEntry* entry : context.all<TimeEntry>()) entry->setDateSubmitted(kReferenceInstant);
    if (!context.save()) std::abort();
    calling.push_back(millisecondsOf([&] { callBarely(desk.places, record); }));
    committing.push_back(millisecondsOf([&] { commits.commit(); }));
    sending.push_back(millisecondsOf([&] {
      if (!checks.checkCompany() || !Sending(desk.session, checks, rows, {}).run(false)) std::abort();
    }));
  }
  const double plain = median(calling) + median(committing);
  std::printf(
      "sending 200 records          %8.1f ms  calls %.1f ms + commits %.1f ms  ratio %.2f  (aim 1.5)\n",
      median(sending), median(calling), median(committing), median(sending) / plain);
}

}  // namespace pendra::bench
