#pragma once
// The activity editor works on two things in two ways: the activity's own values stay in the fields until
// the sheet ends with OK, but its time entries, and names added to the lists, change in the document at once.

#include "model/Activity.h"
#include "model/TimeEntry.h"
#include "ui_core/EntryChecks.h"
#include "ui_core/RowTable.h"
#include "ui_core/TablePort.h"

namespace pendra {

/// One row of the table of time entries, a snapshot taken at reload.
struct TimeEntryRow {
  Ref<TimeEntry> entries;
  std::optional<Instant> start;
  QString duration;
  QString date;   ///< month/day/year without padding
  QString time;   ///< hours from 0 to 23, and minutes
  QString notes;  ///< the entry's own, or the placeholder
};

/// The activity editor's sheet.
class ActivityEditorSheet : public EditorSheet {
 public:
  /// Grows or shrinks by the area of the time entries; the top edge stays where it is.
  virtual void setPastTimeViewShown(bool shown) = 0;
};

/// What the activity editor is made of. All must outlive it.
struct ActivityEditorControls {
  EntryFields entry;
  Control& notesField;
  LengthLabel& notesLength;
  Control& activityLabel;
  CheckControl& billableCheckbox;
  CheckControl& autoStartCheckbox;
  Control& okButton;
  Control& littleSaveButton;
  TablePort& activityTable;
  ActivityEditorSheet& sheet;
};

/// The logic of the activity editor. Lives as long as the timer window.
class ActivityEditor {
 public:
  /// Starts shrunk, with lists for the open document.
  ActivityEditor(Session& session, const ActivityEditorControls& controls);

  [[nodiscard]] Session& session() const { return session_; }
  [[nodiscard]] const ActivityEditorControls& controls() const { return controls_; }
  [[nodiscard]] Activity* currentActivity() const { return currentActivity_.get(); }
  void setCurrentActivity(Activity* activity) { currentActivity_ = activity; }
  [[nodiscard]] RowTable<TimeEntryRow>& rows() { return rows_; }

  /// True: adding. False: editing, which enables OK.
  void setLabels(bool adding);
  void setShouldDisplayPastTimeEntries(bool display);
  /// Rebuilds the rows and puts the activity's names into the combo boxes.
  void reloadData();

  /// The lists.
  void reloadNames();
  /// Refills the list of jobs for the customer that is typed in, and forgets the job.
  void customerPicked();
  /// Enables OK while customer and service hold text.
  void enableOk();
  [[nodiscard]] QStringList namesFor(const Control& popup) const;
  [[nodiscard]] bool offersNoServices() const { return serviceNames_.isEmpty(); }

  /// Whether a control may give up the focus with the text that it holds.
  [[nodiscard]] bool mayLeave(const Control& control);
  [[nodiscard]] bool mayLeaveCustomer();
  [[nodiscard]] bool mayLeaveJob();
  [[nodiscard]] bool mayLeaveService();
  [[nodiscard]] bool wantsToAdd(const QString& name, const Control& toList);
  [[nodiscard]] QString listNameFor(const Control& popup) const;

  /// A person changed the text of a control.
  void controlEdited(const Control& control);

  /// OK: ends the sheet when all is valid, after pending edits of an entry were applied.
  void save();
  void cancel() { controls_.sheet.end(EditorSheet::kCancelled); }
  [[nodiscard]] static bool mayCloseWindow() { return true; }

  /// The time entries.
  void applyToSelectedEntry();
  void addTimeEntry();
  void deleteTimeEntry();
  [[nodiscard]] TimeEntry* selectedEntry() const;
  [[nodiscard]] std::optional<int> indexOfEntry(const TimeEntry& period) const;
  [[nodiscard]] bool canDeleteEntries() const;
  Notifier canDeleteEntriesChanges;
  void clearTableSelection();
  void enableTimeEditFields(bool enabled) { pendra::enableTimeEditFields(controls_.entry, enabled); }
  void selectionChanged();
  /// Asked before a cell is typed into. From the first yes on, the placeholder is not needed any more.
  [[nodiscard]] bool isEditable(QStringView column, int row);
  /// The note of a row as it is typed over: the entry's own, never the placeholder.
  [[nodiscard]] QString noteForEditing(int row) const;
  void setValue(const QString& value, QStringView column, int row);
  void sortChanged(const SortOrder& descriptor);

 private:
  [[nodiscard]] TimeEntryRow rowOf(TimeEntry& period, const QString& placeholder) const;
  [[nodiscard]] std::vector<TimeEntryRow> rowsOfActivity() const;
  void showNamesOfActivity();
  void deletePeriod(TimeEntry& period);
  [[nodiscard]] bool isStandalone() const { return session_.isStandalone(); }
  [[nodiscard]] ObjectContext& context() const { return *session_.context(); }

  Session& session_;
  ActivityEditorControls controls_;
  Ref<Activity> currentActivity_;
  RowTable<TimeEntryRow> rows_;
  std::optional<QStringList> customerNames_;
  QStringList jobNames_;
  QStringList serviceNames_;
  bool shouldDisplayPastTimeEntries_ = false;
};

}  // namespace pendra
