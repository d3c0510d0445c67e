#pragma once
// What is being timed right now stands in one place: `running` of an entry. An activity finds its running
// entry there, so that whatever changes the entry, a step taken back too, changes what runs.

#include "model/ActivityTimes.h"
#include "store/ManagedObject.h"

namespace pendra {

class DocumentSettings;
class Customer;
class Job;
class Service;
class TimeEntry;

/// Something that is done for a customer and timed, with all its time entries.
class Activity final : public ManagedObject {
 public:
  static const EntityDescriptor& descriptor();
  [[nodiscard]] const EntityDescriptor& entity() const override { return descriptor(); }

  [[nodiscard]] Customer* customer() const;
  void setCustomer(Customer* customer);
  [[nodiscard]] Job* job() const;
  void setJob(Job* job);
  [[nodiscard]] Service* service() const;
  void setService(Service* service);

  /// Kept whole here, however long.
  [[nodiscard]] const std::optional<QString>& notes() const { return notes_.get(); }
  void setNotes(std::optional<QString> notes);
  [[nodiscard]] std::optional<bool> billable() const { return billable_.get(); }
  void setBillable(std::optional<bool> billable) { assign(billable_, billable); }
  /// Whether the timer starts as soon as the activity has been added.
  [[nodiscard]] std::optional<bool> shouldAutoStartTimer() const { return shouldAutoStartTimer_.get(); }
  void setShouldAutoStartTimer(std::optional<bool> start) { assign(shouldAutoStartTimer_, start); }
  /// A completed activity has left the list; its entries have not.
  [[nodiscard]] std::optional<bool> completed() const { return completed_.get(); }
  void setCompleted(std::optional<bool> completed) { assign(completed_, completed); }
  /// Whether the activity stands above the others in its list.
  [[nodiscard]] std::optional<bool> favourite() const { return favourite_.get(); }
  void setFavourite(std::optional<bool> favourite) { assign(favourite_, favourite); }
  /// The names that an activity had until the list of a company no longer held them.
  struct Loss {
    bool customer = false;
    bool job = false;
    bool service = false;
    [[nodiscard]] bool any() const { return customer || job || service; }
  };
  /// What it lost and still lacks.
  [[nodiscard]] Loss loss() const;
  /// Adds to what it is known to have lost.
  void addLoss(const Loss& loss);
  /// Whatever it names now is meant.
  void forgetLoss();

  /// The time entries, in the order in which they were made.
  [[nodiscard]] Objects<TimeEntry> entries() const { return entries_.get(); }

  /// The entry that is being timed; none when the activity is not running.
  [[nodiscard]] TimeEntry* runningEntry() const;
  [[nodiscard]] bool isRunning() const { return runningEntry() != nullptr; }

  /// Ends the running entry, which gets its duration; nothing when none is running.
  void stop();
  /// A new entry that starts now and is not running.
  TimeEntry& addEntry();
  /// A new entry that starts now, or has run since an instant that has passed, and is the running one. Every
  /// start of a timer comes here: where the user wants one at a time, whatever else runs ends at the same
  /// instant. What began later ends now, so that none of its time is lost.
  TimeEntry& startEntry(std::optional<Instant> since = {});

  /// The sums of the entries' stored lengths, remembered until anything in the document changes. Without what
  /// the running entry has gathered.
  [[nodiscard]] ActivityTimes storedTimes(const Today& today) const;

 private:
  struct StoredTimes {
    quint64 changeCount;
    Today today;
    ActivityTimes times;
  };
  [[nodiscard]] ActivityTimes sumOfEntries(const Today& today) const;

  ToOne<Customer> customer_;
  ToOne<Job> job_;
  ToOne<Service> service_;
  ToOne<DocumentSettings> document_;
  Slot<QString> notes_;
  Slot<bool> billable_;
  Slot<bool> shouldAutoStartTimer_;
  Slot<bool> completed_{false};
  Slot<bool> lostCustomer_;
  Slot<bool> lostJob_;
  Slot<bool> lostService_;
  Slot<bool> favourite_;
  Slot<QString> submitError_;  // stands in the file; nothing reads or writes it
  ToMany<TimeEntry> entries_;
  mutable std::optional<StoredTimes> storedTimes_;
};

}  // namespace pendra
