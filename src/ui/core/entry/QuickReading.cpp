#include "ui_core/QuickReading.h"

#include <algorithm>
#include <cmath>

#include "EntrySplit.h"
#include "model/ActivityTitle.h"
#include "model/Queries.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

using Deed = QuickReading::Deed;
using Why = QuickReading::Why;

constexpr double kMinute = 60;
constexpr qsizetype kMostNamed = 3;

QString clockText(QTime time) { return time.toString(QStringLiteral("H:mm")); }

class Reading {
 public:
  Reading(const QString& text, const NameIndex& index, const ObjectContext& context, NewNames newNames,
          const QLocale& locale)
      : index_(index),
        context_(context),
        newNames_(newNames),
        now_(context.clock().now()),
        split_(splitEntry(text, index, {.today = context.calendar().day(now_), .locale = locale})),
        timesLength_(text.size() - split_.timesAt) {
    reading_.namesAt = split_.customer.at;
    reading_.timesAt = split_.timesAt;
  }

  QuickReading read() {
    if (saysNothing()) return reading_;
    if (split_.fault) {
      refuse(Why::NotUnderstood, split_.fault->at, split_.fault->length, split_.fault->reason);
    }
    readNames();
    readTimes();
    findActivity();
    if (reading_.fault) {
      reading_.deed = Deed::Nothing;
    } else if (reading_.deed != Deed::StartNow) {
      reading_.overlaps = overlapsWith(context_, reading_.start, reading_.end);
    }
    return std::move(reading_);
  }

 private:
  [[nodiscard]] bool saysNothing() const {
    const auto isBlank = [](const WrittenName& name) { return name.text.isEmpty() && !name.isQuoted; };
    return isBlank(split_.customer) && isBlank(split_.job) && isBlank(split_.service) &&
           isBlank(split_.notes) && split_.times.isEmpty() && !split_.fault;
  }

  /// The first reason is the one that is said.
  void refuse(Why why, qsizetype at, qsizetype length, const QString& reason) {
    if (!reading_.fault) reading_.fault = QuickReading::Fault{why, at, length, reason};
  }
  void refuse(Why why, const WrittenName& name, const QString& reason) {
    refuse(why, name.at, name.length, reason);
  }
  void refuseTimes(Why why, const QString& reason) { refuse(why, split_.timesAt, timesLength_, reason); }

  /// How one name is spoken of.
  struct Words {
    const char* unknown;
    const char* several;
  };

  void readNames() {
    reading_.notes = split_.notes.text;
    reading_.customer = readName(split_.customer, index_.customers(),
                                 {QT_TRANSLATE_NOOP("pendra", "No customer is called “%@”."),
                                  QT_TRANSLATE_NOOP("pendra", "“%@” fits %Ln customers: %@.")});
    if (reading_.customer.text.isEmpty() && !split_.job.text.isEmpty()) {
      refuse(Why::NotUnderstood, split_.job, tr("A job needs its customer before it."));
    }
    reading_.job = readName(split_.job, index_.jobs(reading_.customer.text),
                            {QT_TRANSLATE_NOOP("pendra", "This customer has no job “%@”."),
                             QT_TRANSLATE_NOOP("pendra", "“%@” fits %Ln jobs: %@.")});
    reading_.service = readName(split_.service, index_.services(),
                                {QT_TRANSLATE_NOOP("pendra", "No service item is called “%@”."),
                                 QT_TRANSLATE_NOOP("pendra", "“%@” fits %Ln service items: %@.")});
  }

  QuickReading::Name readName(const WrittenName& written, const NameList& names, const Words& words) {
    if (written.text.trimmed().isEmpty()) return {};
    const QStringList found =
        written.isQuoted ? names.calledExactly(written.text) : names.called(written.text);
    if (found.size() == 1) return {.text = found.front()};
    if (found.size() > 1) {
      refuse(Why::Several, written, counted(found.size(), "", words.several, {written.text, listed(found)}));
    } else if (newNames_ == NewNames::Refused) {
      refuse(Why::Unknown, written, formatted(tr(words.unknown), {written.text}));
    }
    return {.text = written.text, .isNew = true};
  }

  static QString listed(const QStringList& names) {
    if (names.size() <= kMostNamed) return names.join(QStringLiteral(", "));
    return counted(names.size() - kMostNamed, "%@ and 1 more", "%@ and %Ln more",
                   {names.first(kMostNamed).join(QStringLiteral(", "))});
  }

  void readTimes() {
    const TimesSaid& times = split_.times;
    const bool isBooked = times.end || times.length;
    reading_.deed = isBooked ? Deed::Book : times.start || times.ago ? Deed::StartEarlier : Deed::StartNow;
    reading_.start = reading_.end = now_;
    if (times.ago && (times.start || times.day || times.end)) {
      return refuseTimes(Why::NotUnderstood, tr("It says twice when it began."));
    }
    if (times.end && times.length)
      return refuseTimes(Why::NotUnderstood, tr("It says twice how long it is."));
    if (times.day && !times.start && !times.length) {
      return refuseTimes(Why::NotUnderstood, tr("A day needs a time or a length: @9:30-11 or 90m."));
    }
    const auto start = startSaid();
    if (!start) return;
    reading_.start = *start;
    if (isBooked) reading_.end = endSaid().value_or(*start);
    if (!reading_.fault) refuseWhatCannotBe();
  }

  /// When it begins; what only says how long it is ends now, and at noon on another day.
  std::optional<Instant> startSaid() {
    const TimesSaid& times = split_.times;
    const QDate today = context_.calendar().day(now_);
    if (times.start) return instantOf(times.day.value_or(today), *times.start);
    if (times.ago) return now_ + -*times.ago;
    if (!times.length) return now_;
    if (times.day && *times.day != today) return instantOf(*times.day, QTime(12, 0));
    return Instant{std::floor((now_ + -*times.length).seconds / kMinute) * kMinute};
  }

  std::optional<Instant> endSaid() {
    const TimesSaid& times = split_.times;
    if (times.length) return reading_.start + *times.length;
    const QDate day = context_.calendar().day(reading_.start);
    return instantOf(*times.end <= *times.start ? day.addDays(1) : day, *times.end);
  }

  /// The first of two equal times of a day, which is noted; a time that a day did not have is a fault.
  std::optional<Instant> instantOf(QDate day, QTime time) {
    constexpr double kWithin = 4 * 3600;
    const Calendar& calendar = context_.calendar();
    const Instant instant = calendar.instant(day, time);
    const QDateTime local = calendar.local(instant);
    if (local.date() != day || local.time() != time) {
      refuseTimes(
          Why::Impossible,
          formatted(tr("%@ did not exist on that day, when the clock was put forward."), {clockText(time)}));
      return std::nullopt;
    }
    const double back = local.offsetFromUtc() - calendar.local(instant + kWithin).offsetFromUtc();
    const QDateTime again = calendar.local(instant + back);
    if (back > 0 && again.date() == day && again.time() == time) reading_.twice.push_back(instant);
    return instant;
  }

  void refuseWhatCannotBe() {
    const Calendar& calendar = context_.calendar();
    if (reading_.start > now_) {
      refuseTimes(Why::Impossible,
                  formatted(tr("%@ is still to come."), {momentText(reading_.start, calendar)}));
    } else if (reading_.end > now_) {
      refuseTimes(Why::Impossible, formatted(tr("It would end at %@, which is still to come."),
                                             {momentText(reading_.end, calendar)}));
    } else if (reading_.deed == Deed::Book && reading_.end - reading_.start < kMinute) {
      refuseTimes(Why::Impossible, tr("It would take no time."));
    }
  }

  [[nodiscard]] QString momentText(Instant instant, const Calendar& calendar) const {
    const QDateTime local = calendar.local(instant);
    const bool isToday = local.date() == calendar.day(now_);
    return isToday ? clockText(local.time()) : local.toString(QStringLiteral("d MMM yyyy H:mm"));
  }

  [[nodiscard]] bool isMeant(const Activity& activity) const {
    const QString job = queries::nameOf(activity.job());
    const QString service = queries::nameOf(activity.service());
    const QString& typedService = reading_.service.text;
    // With a service item it is named wholly; without one what is left open may be anything.
    const bool isWhole = !typedService.isEmpty();
    return queries::nameOf(activity.customer()) == reading_.customer.text &&
           (job == reading_.job.text || (!isWhole && reading_.job.text.isEmpty())) &&
           (!isWhole || service == typedService) && (reading_.notes.isEmpty() || hasNotes(activity));
  }

  [[nodiscard]] bool hasNotes(const Activity& activity) const {
    return activity.notes().value_or(QString()).simplified().compare(reading_.notes.simplified(),
                                                                     Qt::CaseInsensitive) == 0;
  }

  void findActivity() {
    if (reading_.fault) return;
    std::vector<Activity*> meant;
    for (Activity* activity : queries::openActivities(context_)) {
      if (isMeant(*activity)) meant.push_back(activity);
    }
    if (meant.size() > 1 && reading_.notes.isEmpty() && !reading_.service.text.isEmpty()) {
      preferWithoutNotes(meant);
    }
    if (meant.size() > 1) return refuseSeveral(meant);
    if (meant.empty()) meant = completedMeant();
    if (meant.empty()) return requireBothNames();
    reading_.activity = meant.front();
    takeNamesOf(*reading_.activity);
    if (reading_.deed != Deed::Book && reading_.activity->isRunning()) {
      refuse(Why::Running, split_.customer,
             formatted(tr("“%@” runs already."), {activityTitle(*reading_.activity)}));
    }
  }

  /// The newest completed one that is named wholly, notes included: its work goes on.
  [[nodiscard]] std::vector<Activity*> completedMeant() const {
    if (reading_.service.text.isEmpty()) return {};
    Activity* newest = nullptr;
    for (Activity* activity : context_.all<Activity>()) {
      if (activity->completed() == true && isMeant(*activity) && hasNotes(*activity)) newest = activity;
    }
    return newest ? std::vector{newest} : std::vector<Activity*>();
  }

  void refuseSeveral(const std::vector<Activity*>& meant) {
    QStringList titles;
    for (const Activity* activity : meant) {
      QStringList texts{activityTitle(*activity), activity->notes().value_or(QString()).simplified()};
      texts.removeAll(QString());
      titles << formatted(u"“%@”", {texts.join(QStringLiteral(" - "))});
    }
    refuse(Why::Several, split_.customer,
           formatted(tr("%@ activities fit: %@."), {QString::number(meant.size()), listed(titles)}));
  }

  void preferWithoutNotes(std::vector<Activity*>& meant) const {
    std::vector<Activity*> bare;
    std::copy_if(meant.begin(), meant.end(), std::back_inserter(bare),
                 [this](const Activity* one) { return hasNotes(*one); });
    if (bare.size() == 1) meant = bare;
  }

  void takeNamesOf(const Activity& activity) {
    reading_.job = {.text = queries::nameOf(activity.job())};
    reading_.service = {.text = queries::nameOf(activity.service())};
    reading_.notes = activity.notes().value_or(QString());
  }

  /// As the sheet asks for a new activity.
  void requireBothNames() {
    const bool customer = reading_.customer.text.isEmpty();
    const bool service = reading_.service.text.isEmpty();
    if (customer && service) {
      refuse(Why::NotUnderstood, split_.customer, tr("A customer and a service item are missing."));
    } else if (customer) {
      refuse(Why::NotUnderstood, split_.customer, tr("The customer is missing."));
    } else if (service) {
      refuse(Why::NotUnderstood, split_.customer, tr("The service item is missing, as in “Acme: Design”."));
    }
  }

  const NameIndex& index_;
  const ObjectContext& context_;
  NewNames newNames_;
  Instant now_;
  EntrySplit split_;
  qsizetype timesLength_;
  QuickReading reading_;
};

}  // namespace

QuickReading readQuickEntry(const QString& text, const NameIndex& index, const ObjectContext& context,
                            NewNames newNames, const QLocale& locale) {
  return Reading(text, index, context, newNames, locale).read();
}

}  // namespace pendra
