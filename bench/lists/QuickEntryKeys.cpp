#include "QuickEntryKeys.h"

#include "Ratio.h"
#include "model/Queries.h"
#include "support/SilentDisplay.h"
#include "ui_core/QuickEntry.h"

namespace pendra {

namespace {

constexpr int kServices = 200;
constexpr int kActivities = 5000;
constexpr int kEntries = 60000;

void fill(ObjectContext& context) {
  const auto customers = context.fetch<Customer>();
  for (int i = 0; i < kServices; ++i) {
    auto& service = context.insert<Service>();
    service.setName(QStringLiteral("Service %1").arg(i));
    service.setShown(true);
  }
  for (int i = 0; i < kActivities; ++i) {
    auto& activity = context.insert<Activity>();
    Customer* customer = customers[static_cast<std::size_t>(i) % customers.size()];
    activity.setCustomer(customer);
    activity.setJob(customer->jobs()[0]);
    activity.setService(context.all<Service>()[static_cast<std::size_t>(i % kServices)]);
    activity.setNotes(QStringLiteral("What is done for number %1").arg(i));
  }
  for (int i = 0; i < kEntries; ++i) {
    auto& entry = context.insert<TimeEntry>();
    entry.setActivity(context.all<Activity>()[static_cast<std::size_t>(i % kActivities)]);
    entry.setStart(context.clock().now() + -3600.0 * i);
    entry.setDuration(1800);
  }
}

int found(const ObjectContext& context, const QString& text) {
  int count = 0;
  for (const Customer* one : context.all<Customer>()) count += queries::nameContains(one->name(), text);
  for (const Job* one : context.all<Job>()) count += queries::nameContains(one->name(), text);
  for (const Activity* one : context.all<Activity>()) {
    count += queries::nameContains(one->customer()->name(), text) ||
             queries::nameContains(one->job()->name(), text) ||
             queries::nameContains(one->service()->name(), text) || queries::nameContains(one->notes(), text);
  }
  return count;
}

}  // namespace

void measureQuickEntryKeys(Session& session) {
  ObjectContext& context = *session.context();
  context.fill([&] { fill(context); });
  SilentDisplay display;
  TimerState timer(session, display);
  QuickEntry entry(timer);
  const auto key = [&entry](const QString& text) {
    std::ignore = entry.say(entry.read(text));
    std::ignore = entry.completions(text);
  };
  std::printf("index after a change %17.3f ms\n", bench::millisecondsOf([&] { entry.prepare(); }));
  for (const char* text :
       {"c", "customer 42", "customer 0042 ltd, job 0 of: service 1 - what is", "xyz", "0042 @8:30-9"}) {
    const QString typed = QString::fromUtf8(text);
    const std::string name = std::string("enter \"") + typed.left(18).toStdString() + "\"";
    bench::compare(
        name.c_str(), 2, [&] { key(typed); },
        [&] {
          for (const QString& word : typed.split(u' ')) std::ignore = found(context, word);
        });
  }
}

}  // namespace pendra
