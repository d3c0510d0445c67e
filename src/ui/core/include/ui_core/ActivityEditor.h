#pragma once
// The activity editor works on two things in two ways: the activity's own values stay in the fields until
// the sheet ends with OK, and a new activity is not in the document before; but time entries, and names added
// to the lists, change in the document at once.

#include "model/Activity.h"
#include "model/TimeEntry.h"
#include "store/Observers.h"
#include "ui_core/EntryChecks.h"
#include "ui_core/EntryEchoes.h"
#include "ui_core/RowTable.h"
#include "ui_core/TableSelection.h"

namespace pendra {

class ChangeSet;

/// One row of the table of time entries.
struct TimeEntryRow {
  Ref<TimeEntry> entry;
  std::optional<Instant> start;
  QString duration;
  QString date;   ///< month/day/year without padding
  QString time;   ///< hours from 0 to 23, and minutes
  QString notes;  ///< the entry's own, or the placeholder
  friend bool operator==(const TimeEntryRow&, const TimeEntryRow&) = default;
};

/// The activity editor's sheet.
class ActivityEditorSheet : public EditorSheet, public EchoDisplay {
 public:
  /// Grows or shrinks by the area of the time entries; the top edge stays where it is.
  virtual void setPastTimeViewShown(bool shown) = 0;
  /// Says what is missing before OK can be pressed; empty when nothing is.
  virtual void showMissing(const QString& sentence) = 0;
  /// Says why a service item is not in its list, beside the way to them; empty when there is nothing to say.
  virtual void showServiceHint(const QString& sentence) = 0;
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
  ActivityEditorSheet& sheet;
};

/// The logic of the activity editor. Lives as long as the timer window; follows the open document by its
/// news.
class ActivityEditor {
 public:
  /// Starts shrunk.
  ActivityEditor(Session& session, const ActivityEditorControls& controls);

  [[nodiscard]] Session& session() const { return session_; }
  [[nodiscard]] const ActivityEditorControls& controls() const { return controls_; }
  /// The activity that is edited; none when one is added, which is in the document from OK on.
  [[nodiscard]] Activity* currentActivity() const { return currentActivity_.get(); }
  /// Its time entries, one of which is selected at a time.
  [[nodiscard]] RowTable<TimeEntryRow>& rows() { return rows_; }
  [[nodiscard]] TableSelection& selection() { return selection_; }

  /// Fills the sheet from an activity; without one, for a new one.
  void fill(Activity* activity);
  /// What OK does to the document, as one edit; answers the activity. None when it has gone meanwhile.
  Activity* store();
  /// Holds no activity any more; after the sheet has ended.
  void letGo();

  /// Empties the job, which is another customer's, and lets one be chosen where there are some.
  void customerPicked();
  [[nodiscard]] QStringList namesFor(const Control& popup) const;

  /// Whether a control may give up the focus with the text that it holds.
  [[nodiscard]] bool mayLeave(const Control& control);

  /// A person changed the text of a control.
  void controlEdited(const Control& control);

  /// OK: ends the sheet when all is valid.
  void save();
  void cancel() { controls_.sheet.end(EditorSheet::kCancelled); }

  /// The time entries, each an edit of its own that stays when the sheet is cancelled.
  /// False when the fields hold what cannot be applied; then that has been said.
  bool applyToSelectedEntry();
  void addTimeEntry();
  void deleteTimeEntry();
  [[nodiscard]] TimeEntry* selectedEntry() const;
  [[nodiscard]] std::optional<int> indexOfEntry(const TimeEntry& entry) const;
  [[nodiscard]] bool canDeleteEntries() const;
  /// Asked before a cell is typed into. From the first yes on, the placeholder is not needed any more.
  [[nodiscard]] bool isEditable(QStringView column, int row);
  /// The note of a row as it is typed over: the entry's own, never the placeholder.
  [[nodiscard]] QString noteForEditing(int row) const;
  void setValue(const QString& value, QStringView column, int row);

 private:
  void clearTableSelection();
  void selectionChanged();
  [[nodiscard]] bool settleTimes();
  [[nodiscard]] TimeEntryRow rowOf(TimeEntry& entry, const QString& placeholder) const;
  [[nodiscard]] std::vector<TimeEntryRow> rowsOfActivity() const;
  void followDocument();
  void documentEdited(const ChangeSet& changes);
  void refreshRows(const ChangeSet& changes);
  void showKind(bool adding);
  void showNames(const Activity* activity);
  void showHints();
  void showEchoes();
  [[nodiscard]] QString missing() const;
  [[nodiscard]] QString serviceHint() const;
  [[nodiscard]] bool mayLeaveCustomer();
  [[nodiscard]] bool mayLeaveJob();
  [[nodiscard]] bool mayLeaveService();
  [[nodiscard]] bool wantsToAdd(const QString& name, OfferedList list);
  [[nodiscard]] QStringList jobNames() const;
  void applyTimes(TimeEntry& entry, const EntryTexts& texts);
  [[nodiscard]] QStringList timeTexts() const;
  void storeNames(Activity& activity) const;
  [[nodiscard]] bool isStandalone() const { return session_.isStandalone(); }
  [[nodiscard]] ObjectContext& context() const { return *session_.context(); }

  Session& session_;
  ActivityEditorControls controls_;
  Ref<Activity> currentActivity_;
  bool isOpen_ = false;  // from `fill` to `letGo`
  bool adding_ = false;
  RowTable<TimeEntryRow> rows_;
  TableSelection selection_{rows_};
  Ref<TimeEntry> timesOf_;  // the entry whose times they are
  bool goesBack_ = false;   // to an entry whose times could not be applied
  QStringList shownTimes_;  // the time fields as they were filled from the selected row
  bool showsEntries_ = false;
  Notifier::Subscription selectionChanges_;
  Subscription news_;
  Notifier::Subscription documentChanges_;
};

}  // namespace pendra
