#include "ui_core/ActivityEditor.h"

#include "link/AffectedActivities.h"
#include "model/DurationText.h"
#include "model/Queries.h"
#include "platform/Preferences.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui_core/ListSteps.h"
#include "ui_core/NameLookups.h"
#include "ui_core/NoteLength.h"

namespace pendra {

namespace {

std::vector<Column<TimeEntryRow>> timeEntryColumns() {
  return {
      {.head = {.identifier = QStringLiteral("date"),
                .title = tr("Date"),
                .widest = {QStringLiteral("12/30/2026")}},
       .text = [](const TimeEntryRow& row) { return row.date; }},
      {.head = {.identifier = QStringLiteral("time"),
                .title = tr("Time"),
                .alignment = Alignment::Right,
                .kind = CellKind::Time,
                .widest = {QStringLiteral("00:00")}},
       .text = [](const TimeEntryRow& row) { return row.time; }},
      {.head = {.identifier = QStringLiteral("duration"),
                .title = tr("Duration"),
                .alignment = Alignment::Right,
                .kind = CellKind::Time},
       .text = [](const TimeEntryRow& row) { return row.duration; }},
      {.head = {.identifier = QStringLiteral("notes"),
                .title = tr("Notes"),
                .kind = CellKind::Secondary,
                .weight = 1},
       .text = [](const TimeEntryRow& row) { return row.notes; },
       .editable = [](const TimeEntryRow&) { return true; }},
  };
}

RowTraits<TimeEntryRow> timeEntryTraits() {
  return {
      .identity =
          [](const TimeEntryRow& row) { return row.entry ? static_cast<quint64>(row.entry->objectID()) : 0; },
      .running = [](const TimeEntryRow& row) { return row.entry && row.entry->isRunning(); }};
}

}  // namespace

ActivityEditor::ActivityEditor(Session& session, const ActivityEditorControls& controls)
    : session_(session),
      controls_(controls),
      rows_(timeEntryColumns(), timeEntryTraits()),
      selectionChanges_(selection_.changes.observe([this] { selectionChanged(); })),
      documentChanges_(session.documentChanges().observe([this] { followDocument(); })) {
  controls_.sheet.setPastTimeViewShown(false);
  followDocument();
}

void ActivityEditor::followDocument() {
  news_ = {};
  if (isOpen_) cancel();  // its document has gone
  if (session_.document()) {
    news_ = context().observe([this](const ChangeSet& changes) { documentEdited(changes); });
  }
}

void ActivityEditor::documentEdited(const ChangeSet& changes) {
  if (!isOpen_) return;
  if (changes.touches<Service>()) showHints();
  const bool comeOrGo = !changes.inserted<TimeEntry>().empty() || !changes.deleted<TimeEntry>().empty() ||
                        !changes.deleted<Activity>().empty();
  if (comeOrGo || changes.changedAny<TimeEntry>("activity")) {
    rows_.updateRows(rowsOfActivity());
  } else if (changes.touches<TimeEntry>()) {
    refreshRows(changes);
  }
}

/// Kept: promised to those who press "Apply": the dates and times of the rows stay as they were until entries
/// come or go or the sheet is opened again.
void ActivityEditor::refreshRows(const ChangeSet& changes) {
  for (const TimeEntry* entry : changes.changed<TimeEntry>()) {
    const auto index = indexOfEntry(*entry);
    if (!index) continue;
    TimeEntryRow row = *rows_.row(*index);
    row.start = entry->start();
    row.duration = durationText(entry->storedDuration());
    if (changes.changed(*entry, "notes")) row.notes = entry->notes().value_or(QString());
    rows_.replaceRow(*index, std::move(row));
  }
  if (!changes.changedAny<TimeEntry>("start") && !changes.changedAny<TimeEntry>("duration")) return;
  rows_.sortAgain();
}

std::vector<TimeEntryRow> ActivityEditor::rowsOfActivity() const {
  std::vector<TimeEntryRow> rows;
  if (!currentActivity_) return rows;
  const bool found = session_.ports().defaults.boolean(preferences::kUserFoundTableEdit);
  const QString placeholder = found ? QString() : tr("Double-click to edit...");
  for (TimeEntry* entry : currentActivity_->entries()) rows.push_back(rowOf(*entry, placeholder));
  return rows;
}

TimeEntryRow ActivityEditor::rowOf(TimeEntry& entry, const QString& placeholder) const {
  TimeEntryRow row{.entry = &entry,
                   .start = entry.start(),
                   .duration = durationText(entry.storedDuration()),
                   .date = {},
                   .time = {},
                   .notes = entry.notes().value_or(QString())};
  if (row.notes.isEmpty()) row.notes = placeholder;
  if (row.start) {
    const QDateTime local = session_.ports().calendar.local(*row.start);
    const QDate day = local.date();
    row.date = QString::asprintf("%d/%d/%d", day.month(), day.day(), day.year());
    row.time = QString::asprintf("%02d:%02d", local.time().hour(), local.time().minute());
  }
  return row;
}

void ActivityEditor::fill(Activity* activity) {
  isOpen_ = true;
  timesOf_ = {};
  currentActivity_ = activity;
  adding_ = !activity;
  rows_.setRows(rowsOfActivity());
  clearTableSelection();
  showNames(activity);
  const QString note = activity ? activity->notes().value_or(QString()) : QString();
  controls_.notesField.setText(note);
  showNotesLength(controls_.notesLength, note);
  controls_.billableCheckbox.setChecked(!activity || activity->billable() == true);
  controls_.autoStartCheckbox.setChecked(!activity || activity->shouldAutoStartTimer() == true);
  controls_.littleSaveButton.setEnabled(false);
  showKind(!activity);
  (activity ? controls_.notesField : controls_.entry.customerPopup).takeFocus();
}

void ActivityEditor::showKind(bool adding) {
  controls_.activityLabel.setText(adding ? tr("Add Activity") : tr("Edit Activity"));
  controls_.okButton.setText(adding ? tr("Add") : tr("Save"));
  controls_.autoStartCheckbox.setHidden(!adding);
  if (std::exchange(showsEntries_, !adding) == adding) controls_.sheet.setPastTimeViewShown(!adding);
  showHints();
}

void ActivityEditor::showNames(const Activity* activity) {
  const EntryFields& entry = controls_.entry;
  const Customer* customer = activity ? activity->customer() : nullptr;
  entry.customerPopup.setText(queries::nameOf(customer));
  entry.servicePopup.setText(activity ? queries::nameOf(activity->service()) : QString());
  entry.jobPopup.setEnabled(false);
  entry.jobPopup.setText(QString());
  customerPicked();
  // The job comes last: choosing the customer has emptied it.
  if (activity) entry.jobPopup.setText(queries::nameOf(activity->job()));
}

QString ActivityEditor::missing() const {
  const bool customer = isBlank(controls_.entry.customerPopup.text());
  const bool service = isBlank(controls_.entry.servicePopup.text());
  if (customer && service) return tr("A customer and a service item are missing.");
  if (customer) return tr("The customer is missing.");
  return service ? tr("The service item is missing.") : QString();
}

QString ActivityEditor::serviceHint() const {
  const QStringList offered = namesFor(controls_.entry.servicePopup);
  if (offered.isEmpty()) return tr("No service item is offered yet.");
  const QString name = controls_.entry.servicePopup.text();
  const bool isKept = !isBlank(name) && !queries::servicesNamed(context(), name).empty();
  return isKept && !offered.contains(name) ? formatted(tr("“%@” is not offered in this list."), {name})
                                           : QString();
}

void ActivityEditor::showHints() {
  const QString sentence = missing();
  controls_.okButton.setEnabled(sentence.isEmpty());
  controls_.sheet.showMissing(sentence);
  controls_.sheet.showServiceHint(serviceHint());
}

void ActivityEditor::controlEdited(const Control& control) {
  if (&control == &controls_.notesField) {
    followNote(session_, controls_.notesLength, controls_.notesField.text());
    return;
  }
  controls_.littleSaveButton.setEnabled(true);
  showHints();
  showEchoes();
}

/// The names are asked about here, too: what one of them named may have gone since it was left.
void ActivityEditor::save() {
  if (!passes(activitySaveChecks(), textsOf(controls_.entry, session_), session_.ports().alerts)) return;
  if (!mayLeaveCustomer() || !mayLeaveService() || !mayLeaveJob()) return;
  controls_.sheet.end(EditorSheet::kAccepted);
}

Activity* ActivityEditor::store() {
  Activity* activity = currentActivity();
  if (!activity && !adding_) return nullptr;
  std::ignore = context().edit(adding_ ? tr("Add Activity") : tr("Edit Activity"), [&] {
    TimeEntry* entry = selectedEntry();
    // Times that nobody typed stay as they are, to the second.
    if (entry && controls_.littleSaveButton.isEnabled() && timeTexts() != shownTimes_) {
      applyTimes(*entry, textsOf(controls_.entry, session_));
    }
    if (!activity) activity = &createNewActivity(context());
    storeNames(*activity);
    forgetLoss(session_, *activity);
    activity->setNotes(controls_.notesField.text());
    activity->setBillable(controls_.billableCheckbox.isChecked());
    activity->setShouldAutoStartTimer(controls_.autoStartCheckbox.isChecked());
    if (adding_ && activity->shouldAutoStartTimer() == true) activity->startEntry();
  });
  return activity;
}

void ActivityEditor::letGo() {
  currentActivity_ = {};
  isOpen_ = adding_ = false;
  rows_.setRows({});
}

/// A name that is still the activity's own means what it meant, also where another one is called the same.
void ActivityEditor::storeNames(Activity& activity) const {
  const EntryFields& entry = controls_.entry;
  const bool sameCustomer = queries::nameOf(activity.customer()) == entry.customerPopup.text();
  if (!sameCustomer) activity.setCustomer(findCustomerByName(context(), entry.customerPopup.text()));
  if (queries::nameOf(activity.service()) != entry.servicePopup.text()) {
    activity.setService(findServiceByName(context(), entry.servicePopup.text()));
  }
  const QString job = entry.jobPopup.text();
  if (sameCustomer && queries::nameOf(activity.job()) == job) return;
  activity.setJob(job.isEmpty() ? nullptr : findJobByName(context(), job, activity.customer()));
}

}  // namespace pendra
