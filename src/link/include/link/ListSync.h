#pragma once
// Vantor's lists are the truth and ours are copies. Items are found again by their record identifier, not
// by name, with two exceptions that are kept: a service is inserted by name, and a job is matched by
// identifier and name together.

#include "link/AffectedActivities.h"
#include "link/ConnectionChecks.h"

namespace pendra {

struct FetchedLists;

/// Brings the document's customers, jobs and services in line with Vantor's; a list that Vantor does not give
/// is left alone. All lists are asked for before the document is touched, and what they say is one edit: a
/// call that fails changes nothing, and what the channel throws passes through.
class ListSync {
 public:
  /// Both must outlive it.
  ListSync(Session& session, ConnectionChecks& checks) : session_(session), checks_(checks) {}

  /// Fills the lists of a document that was just linked, and shows its timer window.
  void loadLists();
  /// The command: fetches all lists and says when that is done.
  void updateLists();
  /// The same without a word, before time is sent.
  void refreshBeforeSending();

  /// The command; asks for one file of any type.
  void importCustomers();

 private:
  void merge(const FetchedLists& lists);

  Session& session_;
  ConnectionChecks& checks_;
};

}  // namespace pendra
