#include "sample/SampleDocument.h"

#include "Random.h"
#include "Words.h"
#include "model/Activity.h"
#include "model/Customer.h"
#include "model/DocumentSettings.h"
#include "model/Identity.h"
#include "model/Job.h"
#include "model/Service.h"
#include "model/TimeEntry.h"

namespace pendra {

namespace {

constexpr int kMinute = 60;
constexpr int kHour = 60 * kMinute;
constexpr qint64 kDay = 24 * kHour;
constexpr int kLongestHistory = 2600;  // days: about seven years, however many entries there are

/// The instant at which a day begins in universal time, so that no zone plays a part.
Instant beginOf(QDate day) { return {static_cast<double>(QDate(2001, 1, 1).daysTo(day) * kDay)}; }

constexpr int kDayBegins = 7 * kHour;
constexpr int kNoon = 12 * kHour;  // the time of `SampleClock`

/// Makes one sample, from the settings to the entries.
class Sample {
 public:
  Sample(ObjectContext& context, const SampleOptions& options)
      : context_(context),
        options_(options),
        words_(options.everyday ? words::everyday() : words::trying()),
        random_(options.seed) {}

  void fill() {
    makeSettings();
    makeServices();
    makeCustomers();
    makeJobs();
    const int open = options_.activities.value_or(options_.customers > 0 ? 14 : 0);
    const int entries = options_.entries.value_or(open > 0 ? 400 : 0);
    for (int number = 0; number < open; ++number) makeActivity(false);
    for (int number = 0; number < completedFor(open, entries); ++number) makeActivity(true);
    makeEntries(entries);
  }

 private:
  void makeSettings() {
    auto& identity = context_.insert<Identity>();
    identity.setCompanyFileName(options_.standalone ? QString()
                                                    : QStringLiteral("/srv/vantor/Sample Company.vantor"));
    identity.setEmployeeName(options_.standalone ? QStringLiteral("Me") : QStringLiteral("Käthe Möbius"));
    auto& settings = context_.insert<DocumentSettings>();
    settings.setIdentity(&identity);
    settings.setStandalone(options_.standalone);
  }

  /// Vantor's numbers for the kind's records; every ninth record stands only here.
  [[nodiscard]] QString recordID(int kind, int number) const {
    const bool local = options_.standalone || number % 9 == 8;
    return local ? QStringLiteral("0") : QString::number(kind + number);
  }

  void makeServices() {
    for (int number = 0; number < options_.services; ++number) {
      auto& service = context_.insert<Service>();
      service.setName(words_.service(number));
      service.setVtObjectID(recordID(3000, number));
      service.setShown(number % 11 != 10);
      services_.push_back(&service);
    }
  }

  void makeCustomers() {
    for (int number = 0; number < options_.customers; ++number) {
      auto& customer = context_.insert<Customer>();
      customer.setName(words_.customer(number));
      customer.setVtObjectID(recordID(100000, number));
      customer.setShown(number % 10 != 9);
      customers_.push_back(&customer);
    }
  }

  /// In turn one for each customer, leaving out every third customer while it can.
  void makeJobs() {
    const int count = options_.jobs.value_or(options_.customers * 2);
    for (int number = 0; number < count; ++number) {
      auto& job = context_.insert<Job>();
      const int place = number % std::max(1, options_.customers);
      job.setName(words_.job(number));
      job.setVtObjectID(recordID(500000, number));
      job.setShown(number % 13 != 12);
      if (!customers_.empty()) job.setCustomer(customers_[static_cast<size_t>(place - place % 3 / 2)]);
    }
  }

  /// Some are always done with, and one at least must take the entries when none is open.
  static int completedFor(int open, int entries) { return entries == 0 ? open / 4 : std::max(1, open / 4); }

  template <class T>
  T* oneOf(const std::vector<T*>& choices) {
    return choices.empty() ? nullptr : random_.oneOf(std::span<T* const>(choices));
  }

  void makeActivity(bool completed) {
    auto& activity = context_.insert<Activity>();
    // Each customer in turn first, so that none is without work while there is enough for all.
    Customer* customer =
        activities_.size() < customers_.size() ? customers_[activities_.size()] : oneOf(customers_);
    activity.setCustomer(customer);
    if (customer && random_.percent(85)) activity.setJob(oneOf(customer->jobs().copy()));
    activity.setService(oneOf(services_));
    activity.setNotes(random_.oneOf(words_.activityNotes));
    activity.setBillable(!random_.percent(10));
    activity.setShouldAutoStartTimer(true);
    activity.setCompleted(completed);
    activities_.push_back(&activity);
  }

  /// Some entries a day on five days of seven, up to today; more a day when there are very many.
  void makeEntries(int count) {
    if (count == 0) return;
    const int busiest = std::max(6, count / (kLongestHistory * 5 / 7) + 1);
    std::vector<std::pair<QDate, int>> days;
    int planned = 0;
    for (QDate day = options_.today; planned < count; day = day.addDays(-1)) {
      if (day.dayOfWeek() >= 6 && !random_.percent(8)) continue;
      const int wanted = std::min(random_.between((busiest + 1) / 2, busiest), count - planned);
      days.emplace_back(day, wanted);
      planned += wanted;
    }
    for (auto day = days.rbegin(); day != days.rend(); ++day) makeDay(day->first, day->second);
  }

  /// A day's entries, one after the other; the last of some days runs past midnight. Today has come to noon.
  void makeDay(QDate day, int count) {
    const int share = (day == options_.today ? kNoon - kDayBegins : 9 * kHour) / count;
    for (int number = 0; number < count; ++number) {
      const bool night = number + 1 == count && day != options_.today && random_.percent(3);
      const int begin = night ? 23 * kHour + random_.below(50 * kMinute)
                              : kDayBegins + number * share + random_.below(std::max(1, share / 4));
      const int length =
          night ? kHour + random_.below(kHour) : share / 4 + random_.below(std::max(1, share / 2));
      makeEntry(day, begin, length);
    }
  }

  void makeEntry(QDate day, int begin, int length) {
    auto& entry = context_.insert<TimeEntry>();
    entry.setActivity(oneOf(activities_));
    entry.setStart(beginOf(day) + begin + random_.below(1000) / 1000.0);
    entry.setDuration(length + random_.below(1000) / 1000.0);
    entry.setDateSubmitted(sentAt(day));
    if (random_.percent(options_.everyday ? 60 : 30)) entry.setNotes(random_.oneOf(words_.entryNotes));
  }

  /// What is older than a working week was sent, but for a few; on the Friday after it.
  Instant sentAt(QDate day) {
    const bool sent = day.daysTo(options_.today) > 6 && !random_.percent(2);
    if (!sent) return kReferenceInstant;
    const int untilFriday = (12 - day.dayOfWeek()) % 7;
    return beginOf(day.addDays(untilFriday)) + 17 * kHour + random_.below(kHour);
  }

  ObjectContext& context_;
  const SampleOptions& options_;
  const words::Words& words_;
  Random random_;
  std::vector<Customer*> customers_;
  std::vector<Service*> services_;
  std::vector<Activity*> activities_;
};

}  // namespace

SampleClock::SampleClock(QDate today) : now_(beginOf(today) + kNoon) {}

void fillSample(ObjectContext& context, const SampleOptions& options) { Sample(context, options).fill(); }

}  // namespace pendra
