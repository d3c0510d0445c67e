#pragma once
// A length that nobody can have worked, negative or longer than a day, is stored as it is: the clock was set
// while the entry ran, or its timer was forgotten. It is told when it comes to be, marked in the time log,
// and asked about before it is sent.

#include "document/Session.h"
#include "link/SubmissionRows.h"
#include "store/Observers.h"

namespace pendra {

/// Whether nobody can have worked so long.
[[nodiscard]] bool isDoubtfulLength(double seconds);
/// Why such a length is marked, as a sentence.
[[nodiscard]] QString doubtfulLengthText(double seconds);
/// Asks whether such lengths are to be sent, if there are any among the unsent rows; false when not.
[[nodiscard]] bool askAboutDoubtfulLengths(Session& session, const std::vector<SubmissionRow>& rows);

/// Tells of such lengths in a notice as they come to be, whichever document is open.
class DoubtfulLengths {
 public:
  /// The session must outlive it.
  explicit DoubtfulLengths(Session& session);
  Q_DISABLE_COPY_MOVE(DoubtfulLengths)

 private:
  void followDocument();
  void edited(const ChangeSet& changes);

  Session& session_;
  Subscription news_;
  Notifier::Subscription documentChanges_;
};

}  // namespace pendra
