#include "link/ListSync.h"

#include <QFileInfo>

#include "FetchedLists.h"
#include "ListMerging.h"
#include "document/Backups.h"
#include "document/DocumentLoading.h"
#include "document/RunningTimers.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

/// Three lists, and the two questions of a check before the services and before the customers.
constexpr int kAnswers = 7;

FetchedLists::List fetchServices(ConnectionChecks& checks) {
  return checks.checkCompany() ? checks.remoteServer().services() : std::nullopt;
}

void fetchCustomersAndJobs(ConnectionChecks& checks, FetchedLists& lists) {
  if (!checks.checkCompany()) return;
  lists.customers = checks.remoteServer().customers();
  lists.jobs = checks.remoteServer().jobs();
}

FetchedLists fetch(ConnectionChecks& checks) {
  const Spinning spinning(checks.progress(), tr("Fetching the lists from Vantor…"), kAnswers);
  FetchedLists lists;
  lists.services = fetchServices(checks);
  fetchCustomersAndJobs(checks, lists);
  return lists;
}

}  // namespace

void ListSync::loadLists() {
  const ConnectionChecks::Closing closing(checks_);
  merge(fetch(checks_));
  createNewTimer(session_);
}

void ListSync::updateLists() {
  if (!session_.context()) return;
  {
    const ConnectionChecks::Closing closing(checks_);
    if (!checks_.checkCompany() || !checkForRunningTimers(session_)) return;
    merge(fetch(checks_));
  }
  session_.ports().alerts.runAlert({.style = Alert::Style::Informational,
                                    .message = tr("Your lists are now up to date"),
                                    .informative = tr("Click OK to continue"),
                                    .buttons = {tr("OK")}});
}

void ListSync::refreshBeforeSending() {
  FetchedLists lists;
  {
    const Spinning spinning(checks_.progress(), tr("Fetching the lists from Vantor…"), kAnswers);
    fetchCustomersAndJobs(checks_, lists);
    lists.services = fetchServices(checks_);
  }
  merge(lists);
}

void ListSync::merge(const FetchedLists& lists) {
  ObjectContext& context = *session_.context();
  std::ignore = makeBackup(session_, BackupReason::UpdatingLists);  // without one it says so
  const NamesBefore before(context);
  QStringList affected;
  std::ignore = context.edit(tr("Update Lists from Vantor"), {.undoable = false}, [&] {
    mergeLists(context, lists);
    affected = before.noteLosses();
  });
  tellOfLosses(session_, affected);
}

void ListSync::importCustomers() {
  // Kept: promised to those who know the menu: the command asks for a file and takes nothing from it.
  const auto file = session_.ports().panels.runOpenPanel();
  if (!file) return;
  session_.notices().post(
      {.key = QStringLiteral("import"),
       .text = formatted(tr("Nothing was taken from “%@”: this version reads no customer lists from files. "
                            "Customers come from Vantor, or are added in Customers and Jobs."),
                         {QFileInfo(*file).fileName()}),
       .actions = {}});
}

}  // namespace pendra
