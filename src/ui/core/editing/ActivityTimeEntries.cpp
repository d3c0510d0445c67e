#include <QScopedValueRollback>

#include "model/DurationText.h"
#include "platform/Preferences.h"
#include "platform/Translation.h"
#include "ui_core/ActivityEditor.h"

namespace pendra {

namespace {

/// The only column that can be typed into.
constexpr QStringView kNotesColumn = u"notes";

}  // namespace

bool ActivityEditor::applyToSelectedEntry() {
  TimeEntry* entry = selectedEntry();
  const EntryTexts texts = textsOf(controls_.entry, session_, entry != nullptr);
  if (!passes(selectedEntryChecks(), texts, session_.ports().alerts)) return false;
  std::ignore = context().edit(tr("Edit of an Entry"), [&] { applyTimes(*entry, texts); });
  if (const auto row = indexOfEntry(*entry)) selection_.selectRow(*row);
  return true;
}

void ActivityEditor::applyTimes(TimeEntry& entry, const EntryTexts& texts) {
  if (entry.timeIsFixed()) return;
  storeTime(entry, startToStore(entry, texts, session_.notices()), texts.duration);
}

/// What stands in the time fields is the selected entry's, and stored before another one is selected.
void ActivityEditor::addTimeEntry() {
  if (!currentActivity_) return;
  if (selectedEntry() && timeTexts() != shownTimes_ && !applyToSelectedEntry()) return;
  const Instant start =
      startOfAddedEntry(*currentActivity_, session_.ports().clock.now(), session_.ports().calendar);
  TimeEntry* entry = nullptr;
  std::ignore = context().edit(tr("New Entry"), [&] {
    entry = &currentActivity_->addEntry();
    entry->setStart(start);
  });
  if (const auto row = indexOfEntry(*entry)) selection_.selectRow(*row);
  controls_.entry.startDateField.takeFocus();
}

void ActivityEditor::deleteTimeEntry() {
  const Ref<TimeEntry> entry(selectedEntry());
  if (!entry) return;
  const Alert question{.style = Alert::Style::Critical,
                       .message = tr("Are you sure you want to delete this time event?"),
                       .informative = {},
                       .buttons = {tr("Delete"), tr("Cancel")}};
  session_.ports().alerts.beginSheet(question, [this, entry](int answer) {
    if (answer != kFirstButton || !entry) return;
    std::ignore = context().edit(tr("Delete of an Entry"), [&] {
      if (entry->isRunning()) entry->stopTimer();
      context().deleteObject(*entry);
    });
  });
}

TimeEntry* ActivityEditor::selectedEntry() const {
  const TimeEntryRow* row = rows_.row(selection_.row());
  return row ? row->entry.get() : nullptr;
}

std::optional<int> ActivityEditor::indexOfEntry(const TimeEntry& entry) const {
  return rows_.indexOf([&](const TimeEntryRow& row) { return row.entry == &entry; });
}

bool ActivityEditor::canDeleteEntries() const { return selection_.row() >= 0 && rows_.rowCount() > 0; }

QStringList ActivityEditor::timeTexts() const {
  const EntryFields& entry = controls_.entry;
  return {entry.startDateField.text(), entry.startTimeField.text(), entry.startTimeFieldAMPM.text(),
          entry.durationField.text()};
}

/// What stands in the time fields is applied before they show another entry. False when it cannot be, which
/// has been said; then the entry is selected again, and the fields stay.
bool ActivityEditor::settleTimes() {
  TimeEntry* left = timesOf_.get();
  if (!left || !isOpen_ || left == selectedEntry() || editInProgress() || timeTexts() == shownTimes_) {
    return true;
  }
  const EntryTexts texts = textsOf(controls_.entry, session_);
  if (!passes(selectedEntryChecks(), texts, session_.ports().alerts)) {
    const QScopedValueRollback goingBack(goesBack_, true);
    if (const auto row = indexOfEntry(*left)) selection_.selectRow(*row);
    return false;
  }
  std::ignore = context().edit(tr("Edit of an Entry"), [&] { applyTimes(*left, texts); });
  return true;
}

void ActivityEditor::selectionChanged() {
  if (goesBack_ || !settleTimes()) return;
  const int selected = selection_.row();
  const TimeEntryRow* row = rows_.row(selected);
  if (row || selected < 0) {
    showStart(controls_.entry, row ? row->start : std::nullopt, session_.ports().calendar);
    controls_.entry.durationField.setText(row ? row->duration : QString());
    shownTimes_ = timeTexts();
  }
  if (row) controls_.littleSaveButton.setEnabled(false);
  TimeEntry* entry = selectedEntry();
  timesOf_ = entry;
  // Kept: promised to those who use the sheet: past the end there is no entry, and none counts as not sent.
  enableTimeEditFields(controls_.entry, selected >= 0 && !(entry && entry->timeIsFixed()));
  showEchoes();
}

/// What "Apply" makes of the fields, once there is something to apply.
void ActivityEditor::showEchoes() {
  EntryEchoes echoes;
  const TimeEntry* entry = selectedEntry();
  if (entry && !entry->timeIsFixed()) {
    const QStringList texts = timeTexts();
    const bool startIsTyped = texts.first(3) != shownTimes_.first(3);
    echoTime(echoes, *entry, textsOf(controls_.entry, session_),
             {.start = startIsTyped, .length = texts.last() != shownTimes_.last()});
    const bool isApplied = controls_.littleSaveButton.isEnabled();
    if (!isApplied) echoes.start = {};
    if (!isApplied && !echoes.lengthRuns) echoes = {};
  }
  controls_.sheet.showEchoes(echoes);
}

void ActivityEditor::clearTableSelection() {
  selection_.clearSelection();
  selectionChanged();  // also when the selected entry was another activity's
}

bool ActivityEditor::isEditable(QStringView column, int) {
  if (column != kNotesColumn) return false;
  session_.ports().defaults.setBoolean(preferences::kUserFoundTableEdit, true);
  return true;
}

QString ActivityEditor::noteForEditing(int row) const {
  const TimeEntryRow* shown = rows_.row(row);
  return shown && shown->entry ? shown->entry->notes().value_or(QString()) : QString();
}

void ActivityEditor::setValue(const QString& value, QStringView column, int row) {
  const TimeEntryRow* shown = rows_.row(row);
  if (column != kNotesColumn || !shown || !shown->entry) return;
  std::ignore = context().edit(tr("Edit of an Entry"), [&] { shown->entry->setNotes(value); });
}

}  // namespace pendra
