#include "link/ListSync.h"

#include <QCoreApplication>

#include "FetchedLists.h"
#include "ListMerging.h"
#include "document/DocumentLoading.h"
#include "document/RunningTimers.h"

namespace pendra {

void ListSync::loadLists() {
  const ConnectionChecks::Closing closing(checks_);
  FetchedLists lists;
  fetchServices(lists);
  fetchCustomersAndJobs(lists);
  merge(lists);
  createNewTimer(session_);
}

void ListSync::updateLists() {
  if (!session_.context()) return;
  {
    const ConnectionChecks::Closing closing(checks_);
    if (!checks_.checkCompany() || !checkForRunningTimers(session_)) return;
    FetchedLists lists;
    {
      const Spinning spinning(progress_);
      fetchServices(lists);
      fetchCustomersAndJobs(lists);
    }
    merge(lists);
  }
  session_.ports().alerts.runAlert({.style = Alert::Style::Informational,
                                    .message = QStringLiteral("Your lists are now up to date"),
                                    .informative = QStringLiteral("Click OK to continue"),
                                    .buttons = {QStringLiteral("OK")}});
}

void ListSync::refreshBeforeSending() {
  FetchedLists lists;
  {
    const Spinning spinning(progress_);
    fetchCustomersAndJobs(lists);
    fetchServices(lists);
  }
  merge(lists);
}

void ListSync::fetchServices(FetchedLists& lists) {
  if (checks_.checkCompany()) lists.services = checks_.remoteServer().getServicesArray();
}

void ListSync::fetchCustomersAndJobs(FetchedLists& lists) {
  if (!checks_.checkCompany()) return;
  lists.customers = checks_.remoteServer().getCustomersArray();
  lists.jobs = checks_.remoteServer().getJobsArray();
}

void ListSync::merge(const FetchedLists& lists) {
  ObjectContext& context = *session_.context();
  const NamesBefore before(context);
  QStringList affected;
  const QString name = QCoreApplication::translate("pendra::ListSync", "Update Lists from Vantor");
  std::ignore = context.edit(name, {.undoable = false}, [&] {
    mergeLists(context, lists);
    affected = before.noteLosses();
  });
  tellOfLosses(session_, affected);
}

void ListSync::importCustomers() {
  // Kept: the command asks for a file and takes nothing from it.
  std::ignore = session_.ports().panels.runOpenPanel();
}

}  // namespace pendra
