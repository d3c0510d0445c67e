#pragma once
// The time entry editor writes nothing before `saveValues`, and then to two objects: start, length and note
// to the entry; customer, job, service and notes to the entry's activity, and so to all of its entries.

#include "model/Activity.h"
#include "model/Customer.h"
#include "model/TimeEntry.h"
#include "ui_core/EntryChecks.h"

namespace pendra {

/// What the time entry editor is made of. All must outlive it.
struct TimeEntryEditorControls {
  EntryFields entry;
  Control& notesField;
  Control& activityNotesField;
  LengthLabel& notesLength;
  EditorSheet& sheet;
};

/// The logic of the time entry editor. Lives as long as the timer window.
class TimeEntryEditor {
 public:
  TimeEntryEditor(Session& session, const TimeEntryEditorControls& controls);

  [[nodiscard]] Session& session() const { return session_; }
  [[nodiscard]] const TimeEntryEditorControls& controls() const { return controls_; }
  [[nodiscard]] Activity* currentActivity() const { return currentActivity_.get(); }
  void setCurrentActivity(Activity* activity) { currentActivity_ = activity; }
  [[nodiscard]] TimeEntry* currentEntry() const { return currentEntry_.get(); }
  void setCurrentEntry(TimeEntry* period) { currentEntry_ = period; }
  /// The customer that was last chosen in its field.
  [[nodiscard]] Customer* customer() const { return customer_.get(); }
  void setCustomer(Customer* customer) { customer_ = customer; }

  /// Fills the sheet. What entry or activity lack leaves its field as it was.
  void fill();
  /// OK: ends the sheet when all is valid.
  void accept();
  void cancel() { controls_.sheet.end(EditorSheet::kCancelled); }
  /// Writes the fields into entry and activity; for the caller, after OK. Seconds of the length are dropped.
  void saveValues();

  /// The lists.
  void reloadNames();
  /// Refills the list of jobs for the customer that is typed in.
  void customerPicked();
  [[nodiscard]] const QStringList& namesFor(const Control& popup) const;
  [[nodiscard]] bool offersNoServices() const { return serviceNames_.isEmpty(); }

  /// Whether a control may give up the focus with the text that it holds.
  [[nodiscard]] bool mayLeave(const Control& control);
  [[nodiscard]] bool mayLeaveCustomer();
  [[nodiscard]] bool mayLeaveJob() const;
  [[nodiscard]] bool mayLeaveService();
  [[nodiscard]] bool wantsToAdd(const QString& name, const Control& toList);
  [[nodiscard]] QString listNameFor(const Control& popup) const;

  /// A person changed the text of a control.
  void controlEdited();

 private:
  void showNamesOfActivity();
  [[nodiscard]] bool isStandalone() const { return session_.isStandalone(); }
  [[nodiscard]] ObjectContext& context() const { return *session_.context(); }

  Session& session_;
  TimeEntryEditorControls controls_;
  Ref<TimeEntry> currentEntry_;
  Ref<Activity> currentActivity_;
  Ref<Customer> customer_;
  QStringList customerNames_;
  QStringList jobNames_;
  QStringList serviceNames_;
};

}  // namespace pendra
