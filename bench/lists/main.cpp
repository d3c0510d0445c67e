// The customers' list with 5,000 customers and 20,000 jobs, against a plain loop over the same objects: one
// that reads the same names and makes one line of each listed object, with no table, no order kept apart and
// no notification.

#include "Desk.h"
#include "QuickEntryKeys.h"
#include "Ratio.h"
#include "model/Queries.h"
#include "ui_core/CustomerListController.h"

namespace pendra {
namespace {

constexpr int kCustomers = 5000;
constexpr int kJobsEach = 4;

class NoView final : public ListView {
 public:
  void editColumn(int, int) override {}
  void standaloneChanged() override {}
};

struct Line {
  QString name;
  bool shown;
};

/// The least that a list of these objects needs.
class Plain {
 public:
  explicit Plain(ObjectContext& context) : context_(context) {}

  void list(const QString& text) {
    std::vector<Customer*> listed;
    for (Customer* customer : context_.all<Customer>()) {
      const auto jobs = customer->jobs();
      if (queries::nameContains(customer->name(), text) ||
          std::any_of(jobs.begin(), jobs.end(),
                      [&](Job* job) { return queries::nameContains(job->name(), text); })) {
        listed.push_back(customer);
      }
    }
    std::sort(listed.begin(), listed.end(), [](Customer* a, Customer* b) { return *a->name() < *b->name(); });
    lines_.clear();
    for (Customer* customer : listed) {
      lines_.push_back({*customer->name(), customer->shown().value_or(false)});
      for (Job* job : customer->jobs()) lines_.push_back({*job->name(), job->shown().value_or(false)});
    }
  }
  void mark(bool shown) {
    for (Customer* customer : context_.all<Customer>()) {
      customer->setShown(shown);
      for (Job* job : customer->jobs()) job->setShown(shown);
    }
    for (Line& line : lines_) line.shown = shown;
  }

 private:
  ObjectContext& context_;
  std::vector<Line> lines_;
};

void fill(ObjectContext& context) {
  for (int i = 0; i < kCustomers; ++i) {
    auto& customer = context.insert<Customer>();
    // Spread over the alphabet, so that the order of insertion is not the order of names.
    customer.setName(QStringLiteral("Customer %1 Ltd").arg((i * 7919) % kCustomers, 4, 10, QChar(u'0')));
    customer.setShown(true);
  }
  for (int j = 0; j < kJobsEach; ++j) {
    for (Customer* customer : context.all<Customer>()) {
      auto& job = context.insert<Job>();
      job.setName(QStringLiteral("Job %1 of %2").arg(j).arg(*customer->name()));
      job.setCustomer(customer);
    }
  }
}

void run() {
  bench::Desk desk;
  Session& session = desk.session;
  auto document = OpenDocument::read(desk.folder.filePath(QStringLiteral("bench.pdr")), session.objectModel(),
                                     desk.clock, desk.calendar);
  if (!document) std::abort();
  session.open(std::move(document).value());
  const auto context = session.context();
  fill(*context);

  NoView view;
  Plain plain(*context);
  bench::compare(
      "open the editor", 2,
      [&] {
        CustomerListController list(session, view);
        list.start();
      },
      [&] { plain.list({}); });
  CustomerListController list(session, view);
  list.start();
  for (const char* text : {"j", "jo", "c", "42", "0042", "xyz"}) {
    const QString typed = QString::fromUtf8(text);
    const std::string name = std::string("type \"") + text + "\"";
    bench::compare(
        name.c_str(), 2, [&] { list.setSearchString(typed); }, [&] { plain.list(typed); });
  }
  list.setSearchString({});
  plain.list({});
  // What is stored is stored in both.
  const auto inAnEdit = [&](bool shown) {
    return [&, shown] { std::ignore = context->edit(QStringLiteral("Mark"), [&] { plain.mark(shown); }); };
  };
  bench::compare(
      "mark none", 2, [&] { list.markNoneShown(); }, inAnEdit(true));
  bench::compare(
      "mark all", 2, [&] { list.markAllShown(); }, inAnEdit(false));
  measureQuickEntryKeys(session);
}

}  // namespace
}  // namespace pendra

int main() { pendra::run(); }
