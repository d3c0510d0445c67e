#pragma once
// The activity editor works on two things in two ways: the activity's own values stay in the fields until
// the sheet ends with OK, but its time entries, and names added to the lists, change in the document at once.

#include "model/Activity.h"
#include "model/TimePeriod.h"
#include "ui_core/EntryChecks.h"
#include "ui_core/RowTable.h"
#include "ui_core/TablePort.h"

namespace pendra {

/// One row of the table of time entries, a snapshot taken at reload.
struct TimeEntryRow {
  Ref<TimePeriod> timePeriod;
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
  TablePort& myTableView;
  ActivityEditorSheet& sheet;
};

/// The logic of the activity editor. Lives as long as the timer window.
class NewActivityController {
 public:
  /// Starts shrunk, with lists for the open document.
  NewActivityController(Session& session, const ActivityEditorControls& controls);

  [[nodiscard]] Session& session() const { return session_; }
  [[nodiscard]] const ActivityEditorControls& controls() const { return controls_; }
  [[nodiscard]] Activity* myCurrentActivity() const { return myCurrentActivity_.get(); }
  void setMyCurrentActivity(Activity* activity) { myCurrentActivity_ = activity; }
  [[nodiscard]] RowTable<TimeEntryRow>& tableDataArray() { return tableDataArray_; }

  /// True: adding. False: editing, which enables OK.
  void setLabels(bool adding);
  /// Empties the sheet, but for its notes.
  void clearFields();
  void setShouldDisplayPastTimeEntries(bool display);
  [[nodiscard]] bool shouldDisplayPastTimeEntries() const { return shouldDisplayPastTimeEntries_; }
  /// Rebuilds the rows and puts the activity's names into the combo boxes.
  void reloadData();

  /// The lists.
  void reloadComboxes();
  /// Refills the list of jobs for the customer that is typed in, and forgets the job.
  void pickACustomer();
  void pickAJob() {}
  /// Enables OK while customer and service hold text.
  void pickAService();
  [[nodiscard]] QStringList dataArrayForCombobox(const Control& popup) const;
  /// None when the document offers no customer; a list of services may be empty, but is always there.
  [[nodiscard]] const std::optional<QStringList>& customerDataArray() const { return customerDataArray_; }
  [[nodiscard]] const QStringList& jobDataArray() const { return jobDataArray_; }
  [[nodiscard]] const QStringList& serviceDataArray() const { return serviceDataArray_; }

  /// Whether a control may give up the focus with the text that it holds.
  [[nodiscard]] bool textShouldEndEditing(const Control& control);
  [[nodiscard]] bool customerShouldEndEditing();
  [[nodiscard]] bool jobShouldEndEditing();
  [[nodiscard]] bool serviceShouldEndEditing();
  [[nodiscard]] bool wantsToAdd(const QString& name, const Control& toList);
  [[nodiscard]] QString nameForPopup(const Control& popup) const;

  /// A person changed the text of a control.
  void controlTextDidChange(const Control& control);
  [[nodiscard]] QString notesLengthString() const;
  Notifier notesLengthStringChanges;
  void showNoteLengthWarning();

  /// OK: ends the sheet when all is valid, after pending edits of an entry were applied.
  void save();
  void cancel() { controls_.sheet.stopModal(EditorSheet::kCancelled); }
  [[nodiscard]] static bool windowShouldClose() { return true; }

  /// The time entries.
  void updateSelectedPeriod();
  void addTimeEntry();
  void deleteTimeEntry();
  [[nodiscard]] TimePeriod* selectedTimePeriod() const;
  /// Kept: the rows name no activity, so there is none.
  [[nodiscard]] static Activity* selectedActivity() { return nullptr; }
  [[nodiscard]] std::optional<int> indexOfTimePeriod(const TimePeriod& period) const;
  [[nodiscard]] bool canDeleteTimePeriods() const;
  Notifier canDeleteTimePeriodsChanges;
  void clearTableSelection();
  void enableTimeEditFields(bool enabled) { pendra::enableTimeEditFields(controls_.entry, enabled); }
  void tableViewSelectionDidChange();
  /// Asked before a cell is typed into. From the first yes on, the placeholder is not needed any more.
  [[nodiscard]] bool shouldEditTableColumn(QStringView column, int row);
  /// The note of a row as it is typed over: the entry's own, never the placeholder.
  [[nodiscard]] QString noteForEditing(int row) const;
  void setObjectValue(const QString& value, QStringView column, int row);
  void sortDescriptorsDidChange(const SortDescriptor& descriptor);

 private:
  [[nodiscard]] TimeEntryRow rowOf(TimePeriod& period, const QString& placeholder) const;
  [[nodiscard]] std::vector<TimeEntryRow> rowsOfActivity() const;
  void showNamesOfActivity();
  void applyFieldsTo(TimePeriod& period);
  void deletePeriod(TimePeriod& period);
  [[nodiscard]] bool isStandalone() const { return session_.myStandalone(); }
  [[nodiscard]] ObjectContext& context() const { return *session_.myContext(); }

  Session& session_;
  ActivityEditorControls controls_;
  Ref<Activity> myCurrentActivity_;
  RowTable<TimeEntryRow> tableDataArray_;
  std::optional<QStringList> customerDataArray_;
  QStringList jobDataArray_;
  QStringList serviceDataArray_;
  bool shouldDisplayPastTimeEntries_ = false;
};

}  // namespace pendra
