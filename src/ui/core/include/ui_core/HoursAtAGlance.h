#pragma once
// The sums of the stored lengths follow the document by what each edit changed; what runs is added when they
// are read. So neither a tick nor an edit costs more in a large document.

#include "document/Session.h"
#include "model/Hours.h"
#include "store/Observers.h"

namespace pendra {

class ChangeSet;

/// Hours over all activities, open and completed.
struct Glance {
  Length today{};
  Length week{};
  Length notSent{};
  int unsentEntries = 0;
  friend bool operator==(const Glance&, const Glance&) = default;
};

/// Keeps the sums of the open document.
class HoursAtAGlance {
 public:
  /// The session must outlive it.
  HoursAtAGlance(Session& session, const QLocale& region);

  /// The sums at this moment; nothing without a document.
  [[nodiscard]] const Glance& glance() const { return shown_; }
  /// The tick.
  void update();
  /// Announces that a sum is another one.
  Notifier changes;

 private:
  /// What an entry is to the sums, now or before an edit.
  struct Part {
    std::optional<Instant> start;
    Length stored{};
    bool sent = false;
    bool counts = false;
  };
  struct Bounds {
    Days today;
    Days week;
    friend bool operator==(const Bounds&, const Bounds&) = default;
  };
  [[nodiscard]] static Part partOf(const TimeEntry& entry);
  [[nodiscard]] static Part partBefore(const ChangeSet& changes, const TimeEntry& entry);

  void followDocument();
  void documentEdited(const ChangeSet& edit);
  void sumUp();
  void addLength(Glance& sums, const Part& part, Length length) const;
  /// Adds an entry to the stored sums, or takes it away again.
  void put(const Part& part, int sign);
  [[nodiscard]] Bounds bounds() const;

  Session& session_;
  QLocale region_;
  Bounds bounds_;
  Glance stored_;
  Glance shown_;
  Subscription news_;
  Notifier::Subscription documentChanges_;
  Notifier::Subscription preference_;
};

}  // namespace pendra
