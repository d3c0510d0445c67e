// Taking over Vantor's lists, against decoding them: the same archives are read in both, once to throw the
// rows away and once to bring a document in line with them. A first synchronisation also stores what it took
// over, durably, before it returns: it is measured beside decoding and the plainest such storing together.

#include <SQLiteCpp/SQLiteCpp.h>

#include "Desk.h"
#include "Measures.h"
#include "Ratio.h"
#include "channel/Archive.h"
#include "document/DocumentLoading.h"
#include "model/Customer.h"
#include "model/Job.h"
#include "model/Service.h"
#include "platform/Files.h"

namespace pendra::bench {
namespace {

using Rows = std::vector<VantorItem>;

/// The three lists of a company, as the archives that travel.
class Company {
 public:
  Company(int customers, int jobs, int services)
      : customers_(archiveOf("Customer", 'c', customers, 0)),
        jobs_(archiveOf("Job", 'j', jobs, customers)),
        services_(archiveOf("Service", 's', services, 0)) {}

  [[nodiscard]] Rows customers() const { return decoded(customers_); }
  [[nodiscard]] Rows jobs() const { return decoded(jobs_); }
  [[nodiscard]] Rows services() const { return decoded(services_); }
  void decodeAll() const {
    if (customers().empty() || jobs().empty() || services().empty()) std::abort();
  }

 private:
  static QByteArray archiveOf(const char* name, char kind, int count, int parents) {
    ArchiveValue::Array rows;
    for (int i = 0; i < count; ++i) {
      ListRow row{QStringLiteral("%1 %2").arg(QLatin1StringView(name)).arg(i),
                  QStringLiteral("%1%2").arg(QChar::fromLatin1(kind)).arg(i),
                  {}};
      if (parents > 0) row.parent = QStringLiteral("c%1").arg(i % parents);
      rows.push_back(row);
    }
    return writeArchive(rows).value();
  }
  static Rows decoded(const QByteArray& archive) {
    auto read = readArchive(archive);
    if (!read) std::abort();
    Rows rows;
    for (ArchiveValue& element : *read.value().as<ArchiveValue::Array>()) {
      auto& row = *element.as<ListRow>();
      rows.push_back({std::move(row.name), std::move(row.id), std::move(row.parent)});
    }
    return rows;
  }

  QByteArray customers_;
  QByteArray jobs_;
  QByteArray services_;
};

class Vantor final : public RemoteServer {
 public:
  explicit Vantor(const Company& company) : company_(company) {}
  std::optional<QString> companyFileName() override { return std::nullopt; }
  QStringList employeeNames() override { return {}; }
  std::optional<Rows> services() override { return company_.services(); }
  std::optional<Rows> customers() override { return company_.customers(); }
  std::optional<Rows> jobs() override { return company_.jobs(); }
  bool canTalkToPendra() override { return true; }
  void submitTime(const QString&) override {}

 private:
  const Company& company_;
};

class Synchronising {
 public:
  explicit Synchronising(const Company& company)
      : checks_(
            desk_.session,
            [&](const auto&, const auto&) {
              return std::unique_ptr<RemoteServer>(std::make_unique<Vantor>(company));
            },
            desk_.progress) {}

  void emptyDocument() {
    const QString path = firstFreePath(desk_.folder.path() + u"/empty", QStringLiteral("pdr"));
    loadDocument(desk_.session, path);
  }
  void openDocument(const QString& path) {
    if (!loadDocument(desk_.session, path)) std::abort();
  }
  void synchronise() { lists_.refreshBeforeSending(); }
  [[nodiscard]] ObjectContext& context() { return *desk_.session.context(); }

 private:
  Desk desk_;
  ConnectionChecks checks_;
  ListSync lists_{desk_.session, checks_};
};

/// The plainest durable storing of these lists, in a file with the document's own settings and tables.
class Storing {
 public:
  explicit Storing(const QString& path)
      : database_(path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE) {
    database_.exec("PRAGMA journal_mode=DELETE");
    database_.exec("PRAGMA synchronous=EXTRA");
    database_.exec(modelOfDocuments().schema.toStdString());
  }
  void store(const Rows& customers, const Rows& jobs, const Rows& services) {
    SQLite::Transaction transaction(database_, SQLite::TransactionBehavior::IMMEDIATE);
    insert("INSERT INTO Customer (name, vtObjectID) VALUES (?, ?)", customers);
    insert("INSERT INTO Job (name, vtObjectID, customer) VALUES (?, ?, 1)", jobs);
    insert("INSERT INTO Service (name, vtObjectID) VALUES (?, ?)", services);
    transaction.commit();
  }

 private:
  void insert(const char* statement, const Rows& rows) {
    SQLite::Statement insertion(database_, statement);
    for (const VantorItem& row : rows) {
      const QByteArray name = row.name->toUtf8();
      const QByteArray id = row.id->toUtf8();
      insertion.reset();
      insertion.bindNoCopy(1, name.constData());
      insertion.bindNoCopy(2, id.constData());
      insertion.exec();
    }
  }
  SQLite::Database database_;
};

/// Whether a repeated synchronisation leaves a saved document as it is.
bool repeatedChangesNothing(const Company& company, const QString& path) {
  Synchronising one(company);
  one.openDocument(path);
  one.synchronise();
  if (!one.context().save()) std::abort();
  one.synchronise();
  return !one.context().hasChanges();
}

/// What a first synchronisation takes for each thousand jobs, with lists beside them that grow alike.
double firstForEachThousand(int thousands) {
  const Company company(50 * thousands, 1000 * thousands, 25 * thousands);
  std::vector<double> times;
  for (int turn = 0; turn < 9; ++turn) {
    Synchronising one(company);
    times.push_back(processorMillisecondsOf([&] {
      for (int again = 0; again < 20 / thousands; ++again) {
        one.emptyDocument();
        one.synchronise();
      }
    }));
  }
  return median(times) / 20;
}

}  // namespace

void measureLists() {
  const Company company(5000, 20000, 500);
  const QTemporaryDir folder;
  std::vector<double> decoding;
  std::vector<double> storing;
  std::vector<double> first;
  std::vector<double> whole;
  std::vector<double> backedUp;
  std::vector<double> repeated;
  for (int turn = 0; turn < 9; ++turn) {
    Synchronising one(company);
    one.emptyDocument();
    decoding.push_back(processorMillisecondsOf([&] { company.decodeAll(); }));
    const Rows customers = company.customers();
    const Rows jobs = company.jobs();
    const Rows services = company.services();
    Storing plainly(folder.filePath(QStringLiteral("%1.sqlite").arg(turn)));
    storing.push_back(processorMillisecondsOf([&] { plainly.store(customers, jobs, services); }));
    whole.push_back(
        millisecondsOf([&] { first.push_back(processorMillisecondsOf([&] { one.synchronise(); })); }));
    // What the first one brought is backed up before the lists may change again.
    backedUp.push_back(processorMillisecondsOf([&] { one.synchronise(); }));
    repeated.push_back(processorMillisecondsOf([&] { one.synchronise(); }));
  }
  const double plain = median(decoding);
  std::printf("5,000 customers, 20,000 jobs, 500 services: decoding %.1f ms, storing %.1f ms\n", plain,
              median(storing));
  std::printf("  first synchronisation      %8.1f ms  ratio to both %.2f  (aim 3.0)\n", median(first),
              median(first) / (plain + median(storing)));
  std::printf("    with waiting for the disk%8.1f ms  (aim 1,000)\n", median(whole));
  std::printf("  the next, with its backup  %8.1f ms\n", median(backedUp));
  std::printf("  repeated synchronisation   %8.1f ms  ratio %.2f  (aim 3.0)\n", median(repeated),
              median(repeated) / plain);
  std::printf("  repeated changes nothing   %s\n",
              repeatedChangesNothing(company, folder.filePath(QStringLiteral("a.pdr"))) ? "yes" : "NO");
  const double few = firstForEachThousand(1);
  const double many = firstForEachThousand(20);
  std::printf("  a thousand jobs            %8.2f ms alone, %.2f ms among 20,000  ratio %.2f  (aim 1.2)\n",
              few, many, many / few);
}

}  // namespace pendra::bench
