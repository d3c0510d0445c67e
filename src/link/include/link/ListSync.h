#pragma once
// Vantor's lists are the truth and ours are copies. Items are found again by their record identifier, not
// by name, with two exceptions that are kept: a service is inserted by name, and a job is matched by
// identifier and name together.

#include <span>

#include "link/AffectedActivities.h"
#include "link/ConnectionChecks.h"
#include "link/ProgressSink.h"

namespace pendra {

/// Brings the document's customers, jobs and services in line with Vantor's; a list that Vantor does not
/// give is left alone. Nothing is saved here. What the channel throws passes through; what was changed until
/// then stays.
class ListSync {
 public:
  using Rows = std::span<const ListRow>;

  /// All must outlive it.
  ListSync(Session& session, ConnectionChecks& checks, ProgressSink& progress)
      : session_(session), checks_(checks), progress_(progress) {}

  /// Fills the lists of a document that was just linked, and shows its timer window.
  void loadLists();
  /// The command: fetches all lists and makes the windows anew.
  void updateLists();

  void updateServicesList();
  void updateCustomersAndJobs();
  /// Deletes the services that Vantor no longer has, and gives the others Vantor's names.
  void removeServicesNotInList(Rows list);
  /// Deletes the customers that Vantor no longer has. A customer typed in by the user whose name is one of
  /// Vantor's takes that one's identifier.
  void removeCustomersNotInList(Rows list);
  /// Deletes the jobs that Vantor no longer has under their customer; jobs without one are left alone.
  void removeJobsNotInList(Rows list);

  /// The command; asks for one file of any type.
  void importCustomers();
  /// Kept: a command without effect.
  void importCustomerList(const QString& path);

 private:
  bool fetchLists();
  void rebuildWindows();
  void updateCustomers(Rows list);
  void updateJobs(Rows list);

  Session& session_;
  ConnectionChecks& checks_;
  ProgressSink& progress_;
};

}  // namespace pendra
