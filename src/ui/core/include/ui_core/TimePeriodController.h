#pragma once
// The time entry editor writes nothing before `saveValues`, and then to two objects: start, length and note
// to the entry; customer, job, service and notes to the entry's activity, and so to all of its entries.

#include "model/Activity.h"
#include "model/Customer.h"
#include "model/TimePeriod.h"
#include "ui_core/EntryChecks.h"

namespace pendra {

/// What the time entry editor is made of. All must outlive it.
struct TimePeriodControls {
  EntryFields entry;
  Control& notesField;
  Control& activityNotesField;
  LengthLabel& notesLength;
  EditorSheet& sheet;
};

/// The logic of the time entry editor. Lives as long as the timer window.
class TimePeriodController {
 public:
  TimePeriodController(Session& session, const TimePeriodControls& controls);

  [[nodiscard]] Session& session() const { return session_; }
  [[nodiscard]] const TimePeriodControls& controls() const { return controls_; }
  [[nodiscard]] Activity* myCurrentActivity() const { return myCurrentActivity_.get(); }
  void setMyCurrentActivity(Activity* activity) { myCurrentActivity_ = activity; }
  [[nodiscard]] TimePeriod* myCurrentTimePeriod() const { return myCurrentTimePeriod_.get(); }
  void setMyCurrentTimePeriod(TimePeriod* period) { myCurrentTimePeriod_ = period; }
  /// The customer that was last chosen in its field.
  [[nodiscard]] Customer* customer() const { return customer_.get(); }
  void setCustomer(Customer* customer) { customer_ = customer; }

  /// Fills the sheet. What entry or activity lack leaves its field as it was.
  void updateUI();
  /// OK: ends the sheet when all is valid.
  void doSave();
  void cancel() { controls_.sheet.stopModal(EditorSheet::kCancelled); }
  /// Writes the fields into entry and activity; for the caller, after OK. Seconds of the length are dropped.
  void saveValues();

  /// The lists.
  void reloadComboxes();
  /// Refills the list of jobs for the customer that is typed in.
  void pickACustomer();
  void pickAJob() {}
  [[nodiscard]] const QStringList& dataArrayForCombobox(const Control& popup) const;
  [[nodiscard]] const QStringList& customerDataArray() const { return customerDataArray_; }
  [[nodiscard]] const QStringList& jobDataArray() const { return jobDataArray_; }
  [[nodiscard]] const QStringList& serviceDataArray() const { return serviceDataArray_; }

  /// Whether a control may give up the focus with the text that it holds.
  [[nodiscard]] bool textShouldEndEditing(const Control& control);
  [[nodiscard]] bool customerShouldEndEditing();
  [[nodiscard]] bool jobShouldEndEditing() const;
  [[nodiscard]] bool serviceShouldEndEditing();
  [[nodiscard]] bool wantsToAdd(const QString& name, const Control& toList);
  [[nodiscard]] QString nameForPopup(const Control& popup) const;

  /// A person changed the text of a control.
  void controlTextDidChange();
  /// How long the activity's notes are, as the field holds them.
  [[nodiscard]] QString notesLengthString() const;
  Notifier notesLengthStringChanges;
  void showNoteLengthWarning();

 private:
  void showNamesOfActivity();
  [[nodiscard]] bool isStandalone() const { return session_.myStandalone(); }
  [[nodiscard]] ObjectContext& context() const { return *session_.myContext(); }

  Session& session_;
  TimePeriodControls controls_;
  Ref<TimePeriod> myCurrentTimePeriod_;
  Ref<Activity> myCurrentActivity_;
  Ref<Customer> customer_;
  QStringList customerDataArray_;
  QStringList jobDataArray_;
  QStringList serviceDataArray_;
};

}  // namespace pendra
