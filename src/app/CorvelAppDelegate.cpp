#include "CorvelAppDelegate.h"

#include <QApplication>
#include <QFile>
#include <QSessionManager>

#include "document/CorvelDocController.h"
#include "document/RunningTimers.h"
#include "document/Saving.h"
#include "model/Model.h"
#include "platform/Resources.h"

namespace pendra {

namespace {

CorvelAppDelegate* delegate = nullptr;

}  // namespace

ObjectModel loadManagedObjectModel() {
  QFile file(resourceFolder() + u"/Corvel.momd");
  if (!file.open(QIODevice::ReadOnly)) qFatal("Unable to find DataModel in main bundle");
  return managedObjectModel(file.readAll());
}

CorvelAppDelegate::CorvelAppDelegate(Environment& environment)
    : environment_(environment),
      session_(environment_.ports(windows_, menus_), loadManagedObjectModel()),
      link_(session_),
      launch_(session_),
      commands_(session_, menus_, windows_, link_, [this] { terminate(); }),
      signals_([this] { terminate(); }) {
  delegate = this;
  windows_.connectTo(session_, menus_, commands_, link_, [this] { terminate(); });
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, qApp,
                   [this](QSessionManager& manager) { endOfSession(manager); });
}

CorvelAppDelegate::~CorvelAppDelegate() {
  windows_.closeAll();
  delegate = nullptr;
}

CorvelAppDelegate* CorvelAppDelegate::theAppDelegate() { return delegate; }

void CorvelAppDelegate::applicationDidFinishLaunching(const QString& file) {
  launch_.applicationDidFinishLaunching(file);
}

void CorvelAppDelegate::openFromOutside(const QString& path) {
  bringToFront();
  // A panel on a window may be asking something of its own; its window cannot be closed under it.
  if (path.isEmpty() || environment_.modals.isModal() || QApplication::activeModalWidget()) return;
  commands_.openRecent(path);
}

void CorvelAppDelegate::bringToFront() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (!window->isVisible() || !window->isWindow()) continue;
    window->raise();
    window->activateWindow();
  }
}

void CorvelAppDelegate::terminate() {
  if (isTerminating_ || environment_.modals.isModal() || !applicationShouldTerminate()) return;
  isTerminating_ = true;
  applicationWillTerminate();
  QCoreApplication::exit(0);
}

bool CorvelAppDelegate::applicationShouldTerminate() { return launch_.applicationShouldTerminate(); }

void CorvelAppDelegate::applicationWillTerminate() {
  stopAllActivities(session_);
  link_.checks.closeVTConnection();
}

void CorvelAppDelegate::endOfSession(QSessionManager& manager) {
  if (!manager.allowsInteraction()) return saveAction(session_);
  if (applicationShouldTerminate()) {
    manager.release();
    applicationWillTerminate();
  } else {
    manager.cancel();
  }
}

}  // namespace pendra
