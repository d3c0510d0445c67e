#pragma once
// The time entry editor changes nothing before OK, and then two objects in one edit: start, length and note
// are the entry's; customer, job, service and notes its activity's, and so those of all of its entries. Names
// and notes that nobody touched stay what they are, whatever their fields show.

#include <QSet>

#include "model/Activity.h"
#include "model/Customer.h"
#include "model/TimeEntry.h"
#include "ui_core/EntryChecks.h"
#include "ui_core/EntryEchoes.h"

namespace pendra {

/// What the time entry editor is made of. All must outlive it.
struct TimeEntryEditorControls {
  EntryFields entry;
  Control& notesField;
  Control& activityNotesField;
  LengthLabel& notesLength;
  EchoDisplay& echoes;
  EditorSheet& sheet;
};

/// The logic of the time entry editor. Lives as long as the timer window.
class TimeEntryEditor {
 public:
  TimeEntryEditor(Session& session, const TimeEntryEditorControls& controls);

  [[nodiscard]] const TimeEntryEditorControls& controls() const { return controls_; }
  [[nodiscard]] Activity* currentActivity() const { return currentActivity_.get(); }
  [[nodiscard]] TimeEntry* currentEntry() const { return currentEntry_.get(); }
  /// The customer that was last chosen in its field.
  [[nodiscard]] Customer* customer() const { return customer_.get(); }
  void setCustomer(Customer* customer) { customer_ = customer; }

  /// Fills the sheet with an entry and its own activity. What they lack leaves its field as it was.
  void show(TimeEntry& entry);
  /// Shows how long a running entry has run by now; nothing for another.
  void tick();
  /// OK: ends the sheet when all is valid. A name that was touched is asked about first.
  void accept();
  void cancel() { controls_.sheet.end(EditorSheet::kCancelled); }
  /// Writes the fields into entry and activity; for the caller, after OK. Seconds of start and length are
  /// dropped.
  void saveValues();

  /// The lists.
  void reloadNames();
  /// Refills the list of jobs for the customer that is typed in.
  void customerPicked();
  [[nodiscard]] const QStringList& namesFor(const Control& popup) const;
  [[nodiscard]] bool offersNoServices() const { return serviceNames_.isEmpty(); }

  /// Whether a control may give up the focus with the text that it holds.
  [[nodiscard]] bool mayLeave(const Control& control);

  /// A person changed the text of a control.
  void controlEdited(const Control& control);

 private:
  [[nodiscard]] bool mayLeaveCustomer();
  [[nodiscard]] bool mayLeaveJob() const;
  [[nodiscard]] bool mayLeaveService();
  [[nodiscard]] bool wantsToAdd(const QString& name, OfferedList list);
  void showNamesOfActivity();
  void enableFields();
  void refillJobs();
  void showEchoes();
  void showRunningLength();
  [[nodiscard]] Echo namesEcho() const;
  [[nodiscard]] Echo jobEcho() const;
  [[nodiscard]] bool namesMayStand();
  void storeNames(Activity& activity);
  [[nodiscard]] EntryTexts texts() const;
  [[nodiscard]] bool isTouched(const Control& control) const { return touched_.contains(&control); }
  [[nodiscard]] bool isStandalone() const { return session_.isStandalone(); }
  [[nodiscard]] ObjectContext& context() const { return *session_.context(); }

  Session& session_;
  TimeEntryEditorControls controls_;
  Ref<TimeEntry> currentEntry_;
  Ref<Activity> currentActivity_;
  Ref<Customer> customer_;
  QSet<const Control*> touched_;
  bool lengthRuns_ = false;  ///< it ran when the sheet was filled, so no length has been typed
  QStringList customerNames_;
  QStringList jobNames_;
  QStringList serviceNames_;
};

}  // namespace pendra
