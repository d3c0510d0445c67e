#include "link/ListSync.h"

#include "RefreshedWindow.h"
#include "document/DocumentLoading.h"
#include "document/RunningTimers.h"
#include "document/Saving.h"
#include "model/Service.h"

namespace pendra {

void ListSync::loadLists() {
  const ConnectionChecks::Closing closing(checks_);
  updateServicesList();
  updateCustomersAndJobs();
  createNewTimer(session_);
}

void ListSync::updateLists() {
  if (!session_.context() || !fetchLists()) return;
  session_.ports().alerts.runAlert({.style = Alert::Style::Informational,
                                    .message = QStringLiteral("Your lists are now up to date"),
                                    .informative = QStringLiteral("Click OK to continue"),
                                    .buttons = {QStringLiteral("OK")}});
  rebuildWindows();
}

bool ListSync::fetchLists() {
  const ConnectionChecks::Closing closing(checks_);
  if (!checks_.checkCompany() || !checkForRunningTimers(session_)) return false;
  const RefreshedWindow refreshed(session_);
  const Spinning spinning(progress_);
  const LossWatch watch(session_);
  updateServicesList();
  updateCustomersAndJobs();
  return true;
}

namespace {

void rebuild(Session& session, AuxiliaryWindow* window, Interface interface) {
  if (!window || !window->isVisible()) return;
  window->close();
  session.ports().interfaces.load(interface);
}

}  // namespace

void ListSync::rebuildWindows() {
  // The document is read anew from its file. When the file does not hold everything, because it could not
  // be written, what is in memory is all there is and stays.
  if (!saveContext(session_)) {
    if (session_.window) session_.window->reloadData();
  } else {
    if (MainWindow* window = session_.window) {
      window->close();
      session_.window = nullptr;
    }
    loadLastDocument(session_);
    if (session_.context()) session_.ports().interfaces.load(Interface::TimerWindow);
  }
  rebuild(session_, session_.customerListController, Interface::CustomerList);
  rebuild(session_, session_.servicesListController, Interface::ServicesList);
}

void ListSync::updateServicesList() {
  if (!checks_.checkCompany()) return;
  ObjectContext& context = *session_.context();
  const auto list = checks_.remoteServer().getServicesArray();
  if (!list) return;
  for (const ListRow& item : *list) {
    if (!item.name || item.name->isEmpty() || !item.id) continue;
    if (!context.matching<Service>("name", *item.name).empty()) continue;
    auto& service = context.insert<Service>();
    service.setName(item.name);
    service.setVtObjectID(item.id);
  }
  removeServicesNotInList(*list);
}

void ListSync::updateCustomersAndJobs() {
  if (!checks_.checkCompany()) return;
  if (const auto customers = checks_.remoteServer().getCustomersArray()) updateCustomers(*customers);
  if (const auto jobs = checks_.remoteServer().getJobsArray()) updateJobs(*jobs);
}

void ListSync::importCustomers() {
  if (const auto path = session_.ports().panels.runOpenPanel()) importCustomerList(*path);
}

void ListSync::importCustomerList(const QString&) {}

}  // namespace pendra
