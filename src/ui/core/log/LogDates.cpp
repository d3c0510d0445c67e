#include <QCoreApplication>

#include "LogSearch.h"
#include "model/Hours.h"
#include "ui_core/LogController.h"

namespace pendra {

DayReader LogController::dayReader() const {
  return {.today = session_.ports().calendar.day(session_.ports().clock.now()),
          .locale = locale_,
          .weekBegins = weekBegins(session_.ports().defaults, locale_)};
}

std::optional<DaySpan> LogController::daysOfField(const QString& field) const {
  return readDateField(field, dayReader());
}

void LogController::chooseRange(LogRange range) {
  const Notifier::Change change(filtersChanges);
  rangePopup.selectAt(static_cast<int>(range));
  if (range == LogRange::Dates) return;
  fillDates();
  rebuild();
}

/// The fields say what is listed: "today" at the end of a range that goes on, unless there is something
/// later.
void LogController::fillDates() {
  const DayReader reader = dayReader();
  startDateField.clear();
  endDateField.clear();
  auto days = daysOf(range(), reader);
  if (!days) return;
  if (days->last > reader.today && !hasEntriesAfterToday(*days)) days->last = reader.today;
  startDateField = fieldDateOrToday(days->first, reader);
  endDateField = fieldDateOrToday(days->last, reader);
}

bool LogController::hasEntriesAfterToday(const DaySpan& days) const {
  if (!context()) return false;
  const Days later(dayReader().today.addDays(1), days.last, session_.ports().calendar);
  const auto entries = context()->all<TimeEntry>();
  return std::any_of(entries.begin(), entries.end(),
                     [&later](const TimeEntry* entry) { return later.contain(entry->start()); });
}

void LogController::datesTyped() {
  const Notifier::Change change(filtersChanges);
  const bool isEmpty = startDateField.isEmpty() && endDateField.isEmpty();
  rangePopup.selectAt(static_cast<int>(isEmpty ? LogRange::AnyTime : LogRange::Dates));
  rebuild();
}

void LogController::dayChanged() {
  const Notifier::Change change(filtersChanges);
  if (range() != LogRange::Dates) fillDates();
  rebuild();
}

void LogController::prepareSearch() {
  if (!search_->hasGathered()) search_->gather(rows_.all());
}

void LogController::setSearch(const QString& typed) {
  if (typed == searchTyped_) return;
  const Notifier::Change change(filtersChanges);
  const Notifier::Change contents(contentsChanges);
  searchTyped_ = typed;
  const SearchText text(typed);
  if (!text.isEmpty()) prepareSearch();
  search_->lookFor(text);
  rows_.setSearchText(text);
  lookThroughRows();
}

void LogController::lookThroughRows() {
  using Passes = std::function<bool(const LogRow&)>;
  rows_.setFilter(search_->isActive() ? Passes([this](const LogRow& row) { return search_->finds(row); })
                                      : Passes());
  sumUp();
  runningRows_.clear();
  updateRunningEntries();  // what was held back has not ticked
}

}  // namespace pendra
