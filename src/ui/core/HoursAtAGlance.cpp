#include "ui_core/HoursAtAGlance.h"

#include "model/Activity.h"
#include "model/TimeEntry.h"
#include "platform/Preferences.h"

namespace pendra {

namespace {

template <class Value>
std::optional<Value> valueIn(const PropertyValue& value) {
  const Value* held = std::get_if<Value>(&value);
  return held ? std::optional(*held) : std::nullopt;
}

}  // namespace

HoursAtAGlance::HoursAtAGlance(Session& session, const QLocale& region)
    : session_(session),
      region_(region),
      documentChanges_(session.documentChanges().observe([this] { followDocument(); })),
      preference_(
          session.ports().defaults.changesOf(preferences::kWeekBegins).observe([this] { update(); })) {
  followDocument();
}

void HoursAtAGlance::followDocument() {
  news_ = {};
  if (const auto context = session_.context()) {
    news_ = context->observe([this](const ChangeSet& edit) { documentEdited(edit); });
  }
  sumUp();
  update();
}

HoursAtAGlance::Bounds HoursAtAGlance::bounds() const {
  const Calendar& calendar = session_.ports().calendar;
  const QDate day = calendar.day(session_.ports().clock.now());
  const QDate week = startOfWeek(day, weekBegins(session_.ports().defaults, region_));
  return {Days(day, day, calendar), Days(week, week.addDays(6), calendar)};
}

void HoursAtAGlance::sumUp() {
  bounds_ = bounds();
  stored_ = {};
  const auto context = session_.context();
  if (!context) return;
  for (const TimeEntry* entry : context->all<TimeEntry>()) put(partOf(*entry), 1);
}

HoursAtAGlance::Part HoursAtAGlance::partOf(const TimeEntry& entry) {
  const bool runs = entry.isRunning();
  return {.start = entry.start(),
          .stored = runs ? Length() : lengthOf(entry.storedDuration()),
          .sent = entry.wasSent(),
          .counts = entry.activity() != nullptr};
}

HoursAtAGlance::Part HoursAtAGlance::partBefore(const ChangeSet& changes, const TimeEntry& entry) {
  const auto before = [&](QAnyStringView property) { return changes.before(entry, property); };
  const bool ran = valueIn<bool>(before("running")) == true;
  return {.start = valueIn<Instant>(before("start")),
          .stored = ran ? Length() : lengthOf(valueIn<double>(before("duration")).value_or(0)),
          .sent = TimeEntry::isSent(valueIn<Instant>(before("dateSubmitted"))),
          .counts = valueIn<qint64>(before("activity")).has_value()};
}

void HoursAtAGlance::addLength(Glance& sums, const Part& part, Length length) const {
  if (bounds_.today.contain(part.start)) sums.today += length;
  if (bounds_.week.contain(part.start)) sums.week += length;
  if (!part.sent) sums.notSent += length;
}

void HoursAtAGlance::put(const Part& part, int sign) {
  if (!part.counts) return;
  addLength(stored_, part, part.stored * sign);
  if (!part.sent) stored_.unsentEntries += sign;
}

void HoursAtAGlance::documentEdited(const ChangeSet& edit) {
  for (const TimeEntry* entry : edit.inserted<TimeEntry>()) put(partOf(*entry), 1);
  for (const TimeEntry* entry : edit.changed<TimeEntry>()) {
    put(partBefore(edit, *entry), -1);
    put(partOf(*entry), 1);
  }
  for (const TimeEntry* entry : edit.deleted<TimeEntry>()) put(partBefore(edit, *entry), -1);
  update();
}

void HoursAtAGlance::update() {
  if (bounds() != bounds_) sumUp();  // another day, or another zone
  Glance sums = stored_;
  if (const auto context = session_.context()) {
    const Instant now = session_.ports().clock.now();
    for (const TimeEntry* entry : context->flagged<TimeEntry>("running")) {
      const Part part = partOf(*entry);
      if (part.counts) addLength(sums, part, countedAt(now, *entry).length);
    }
  }
  if (sums == shown_) return;
  const Notifier::Change change(changes);
  shown_ = sums;
}

}  // namespace pendra
