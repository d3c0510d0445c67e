#pragma once

#include "document/DocumentLoading.h"
#include "document/Session.h"
#include "model/Queries.h"
#include "support/ManualClock.h"
#include "support/ScriptedAlerts.h"
#include "support/ScriptedPanels.h"
#include "support/ScriptedWindows.h"
#include "support/ScriptedWorkspace.h"
#include "support/TestModel.h"

namespace pendra {

/// A session with every port scripted, in folders of its own, at 2026-11-24 10:00 in Berlin.
class TestSession {
 public:
  TestSession() { windows.setSession(session); }

  /// Opens a document of its own and answers its context.
  ObjectContext& openDocument(bool standalone = true) {
    loadDocument(session, places.path(QStringLiteral("Test.pdr")));
    session.context()->fill([&] { session.settings()->setStandalone(standalone); });
    return *session.context();
  }

  /// From now on no save of the document succeeds: another program's file lies where it was.
  void putAnotherFileInItsPlace() {
    QFile::remove(places.path(QStringLiteral("Test.pdr")));
    QFile other(places.path(QStringLiteral("Test.pdr")));
    if (other.open(QIODevice::WriteOnly)) other.write("another program's file");
  }

  Customer& addCustomer(const QString& name, const QString& id = QStringLiteral("0")) {
    auto& customer = session.context()->insert<Customer>();
    customer.setName(name);
    customer.setVtObjectID(id);
    customer.setShown(true);
    return customer;
  }
  Job& addJob(Customer& customer, const QString& name, const QString& id = QStringLiteral("0")) {
    auto& job = session.context()->insert<Job>();
    job.setName(name);
    job.setVtObjectID(id);
    job.setCustomer(&customer);
    return job;
  }
  Service& addService(const QString& name, const QString& id = QStringLiteral("0")) {
    auto& service = session.context()->insert<Service>();
    service.setName(name);
    service.setVtObjectID(id);
    service.setShown(true);
    return service;
  }
  Activity& addActivity(Customer* customer, Service* service, Job* job = nullptr, const QString& notes = {}) {
    auto& activity = session.context()->insert<Activity>();
    activity.setCustomer(customer);
    activity.setService(service);
    activity.setJob(job);
    activity.setNotes(notes);
    activity.setBillable(true);
    return activity;
  }
  /// A stopped entry of so many seconds.
  TimeEntry& addEntry(Activity& activity, const char* start, double seconds) {
    auto& entry = activity.addEntry();
    entry.setStart(instantOf(start));
    entry.setDuration(seconds);
    return entry;
  }

  TestPlaces places;
  ManualClock clock;
  Calendar calendar{QTimeZone("Europe/Berlin")};
  UserDefaults defaults{places.defaultsFile()};
  ScriptedAlerts alerts;
  ScriptedPanels panels;
  ScriptedWorkspace workspace;
  ModalDepth modals;
  NotificationCenter notifications;
  ScriptedWindows windows;
  Session session{
      {clock, calendar, places, defaults, alerts, panels, workspace, modals, notifications, windows},
      testModel()};
};

}  // namespace pendra
