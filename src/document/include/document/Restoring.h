#pragma once
// A restore gives the open document the state of one of its backups, and never the knowledge of what Vantor
// has: what was sent or is in doubt is so in the document, whatever a backup of before says. Opening a
// backup's file is another thing: that makes a document of its own (Backup.h).

#include <QStringList>

#include "document/Backups.h"

namespace pendra {

/// So many entries, and how long they are together.
struct EntrySum {
  int number = 0;
  double seconds = 0;
  void add(double length) {
    ++number;
    seconds += length;
  }
};

/// What is in a document that a backup of it lacks, and the other way round.
struct SinceBackup {
  EntrySum added;
  EntrySum corrected;  ///< by how much
  EntrySum deleted;
  EntrySum sent;          ///< to Vantor, or given to it with an unknown fate; these stay
  QStringList completed;  ///< activities, by what they are called
  QStringList customers;  ///< that were added
  [[nodiscard]] bool isNothing() const {
    return added.number + corrected.number + deleted.number + sent.number == 0 && completed.isEmpty() &&
           customers.isEmpty();
  }
};
[[nodiscard]] SinceBackup changesSince(const ObjectContext& backup, const ObjectContext& document);
/// The entries of a backup, without reading all of it.
[[nodiscard]] Result<EntrySum> sumOf(const BackupFile& backup);

/// Gives the open document the backup's state, as one step that can be undone. Timers are stopped first, with
/// the user's consent; entries that only the backup has and whose time may be in Vantor are asked about; then
/// the document is backed up, and without that nothing is done. What was sent or is in doubt stays as it is.
/// Answers what was done, in a sentence; none when the user declined or it could not be done, which the
/// notice line says.
[[nodiscard]] std::optional<QString> restoreFromBackup(Session& session, const BackupFile& backup);

/// "Wed 25 Nov 2026, 18:04".
[[nodiscard]] QString dayAndTime(Instant instant, const Calendar& calendar);

}  // namespace pendra
