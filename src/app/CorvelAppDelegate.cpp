#include "CorvelAppDelegate.h"

#include <QApplication>
#include <QFile>
#include <QSessionManager>

#include "document/CorvelDocController.h"
#include "document/DocumentLoading.h"
#include "document/RunningTimers.h"
#include "document/Saving.h"
#include "model/Model.h"
#include "platform/Resources.h"
#include "ui/IntroSheet.h"

namespace pendra {

namespace {

CorvelAppDelegate* delegate = nullptr;

/// How often a request that came while something was asked looks whether it has been answered.
constexpr std::chrono::milliseconds kBetweenLooks{200};

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
      signals_([this] { askedToEnd(); }) {
  delegate = this;
  waiting_.setInterval(kBetweenLooks);
  QObject::connect(&waiting_, &QTimer::timeout, &waiting_, [this] { performWhatWaits(); });
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
  if (!path.isEmpty()) whenNothingIsAsked([this, path] { commands_.openRecent(path); });
}

void CorvelAppDelegate::askedToEnd() {
  saveAction(session_);  // who sends a signal may not wait for the answer to a question
  whenNothingIsAsked([this] { terminate(); });
}

bool CorvelAppDelegate::isAsking() const {
  // A panel on a window may be asking something of its own; its window cannot be closed under it. The
  // introduction asks nothing.
  const QWidget* panel = QApplication::activeModalWidget();
  return environment_.modals.isModal() || (panel && !dynamic_cast<const IntroSheet*>(panel));
}

void CorvelAppDelegate::whenNothingIsAsked(std::function<void()> request) {
  if (!isAsking()) return request();
  waits_.push_back(std::move(request));
  waiting_.start();
}

void CorvelAppDelegate::performWhatWaits() {
  if (isAsking()) return;
  waiting_.stop();
  for (auto& request : std::exchange(waits_, {})) whenNothingIsAsked(std::move(request));
}

void CorvelAppDelegate::bringToFront() {
  if (!isAsking()) ensureAWindow(session_);
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
  if (!manager.allowsInteraction()) {
    stopAllActivities(session_);
    return saveAction(session_);
  }
  if (!isAsking() && applicationShouldTerminate()) {
    manager.release();
    applicationWillTerminate();
  } else {
    manager.cancel();
  }
}

}  // namespace pendra
