#include "WindowLoader.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QTimer>

#include "LinkServices.h"
#include "document/Session.h"
#include "platform/Resources.h"
#include "ui/CommandTarget.h"
#include "ui/FieldUndo.h"
#include "ui/ListWindows.h"
#include "ui/SetupController.h"
#include "ui/ShellWindows.h"
#include "ui/TimerWindowController.h"
#include "ui_core/ShellCommands.h"

namespace pendra {

namespace {

/// Keeps a window that closed until the events at hand are done, because it may still stand on the call
/// stack. By deferred deletion, which also waits for the loops of the alerts that are opened meanwhile.
class Retired final : public QObject {
 public:
  Retired(std::shared_ptr<void> window, QObject* parent) : QObject(parent), window_(std::move(window)) {
    deleteLater();
  }

 private:
  std::shared_ptr<void> window_;
};

}  // namespace

/// The windows that are open, and those that closed and have not gone yet.
struct WindowLoader::Open {
  std::unique_ptr<TimerWindowController> timer;
  std::unique_ptr<SetupController> setup;
  std::unique_ptr<AboutBox> about;
  std::unique_ptr<WelcomeWindow> welcome;
  std::unique_ptr<PreferencesWindow> preferences;
  QObject retired;
};

WindowLoader::WindowLoader() : open_(std::make_unique<Open>()) {}
WindowLoader::~WindowLoader() = default;

void WindowLoader::closeAll() { open_ = std::make_unique<Open>(); }

template <class Window>
void WindowLoader::retire(std::unique_ptr<Window>& window) {
  if (window) new Retired(std::shared_ptr<Window>(std::move(window)), &open_->retired);
}

void WindowLoader::connectTo(Session& session, CommandTarget& target, LinkServices& link,
                             std::function<void()> terminate) {
  link_ = &link;
  session_ = &session;
  target_ = &target;
  terminate_ = std::move(terminate);
  qApp->installEventFilter(this);
}

WindowFrame WindowLoader::frame() const { return {*session_, *target_}; }

template <class Window, class... Arguments>
Window& WindowLoader::open(std::unique_ptr<Window>& place, Arguments&&... arguments) {
  if (!place) {
    place = std::make_unique<Window>(frame(), std::forward<Arguments>(arguments)...);
    place->setClosed([this, &place] { retire(place); });
  }
  place->bringToFront();
  return *place;
}

void WindowLoader::load(Interface interface) {
  switch (interface) {
    case Interface::TimerWindow:
      loadTimerWindow();
      break;
    case Interface::AboutBox:
      open(open_->about, versionText());
      break;
    case Interface::WelcomeController:
      session_->welcomeController = &open(open_->welcome);
      open_->welcome->setClosed([this] {
        session_->welcomeController = nullptr;
        retire(open_->welcome);
      });
      break;
    case Interface::CustomerList:
      loadCustomerList(*session_, *target_);
      break;
    case Interface::ServicesList:
      loadServicesList(*session_, *target_);
      break;
    case Interface::Setup:
      open(open_->setup, link_->checks, link_->lists);
      break;
  }
}

void WindowLoader::loadTimerWindow() {
  retire(open_->timer);
  open_->timer =
      std::make_unique<TimerWindowController>(*session_, *target_, [this] { retire(open_->timer); });
  if (open_->welcome) open_->welcome->close();  // where to begin has been found
}

void WindowLoader::showPreferences() { open(open_->preferences); }

bool WindowLoader::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Hide && watched->isWidgetType() &&
      static_cast<QWidget*>(watched)->isWindow()) {
    endWithoutWindows();
  }
  if (belongsToMenu(*event)) return true;
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F1) {
    return helpFor(watched);
  }
  return false;
}

/// F1 where no menu bar answers it: in a sheet, and on an item of an open menu.
bool WindowLoader::helpFor(QObject* watched) {
  if (const auto* menu = qobject_cast<QMenu*>(watched)) {
    const QAction* item = menu->activeAction();
    showHelp({.text = item ? item->property("helpAnchor").toString() : QString()},
             session_->ports().workspace, resourceFolder());
    return true;
  }
  QWidget* sheet = QApplication::activeModalWidget();
  if (!sheet || !watched->isWidgetType()) return false;
  target_->perform(Command::Help, sheet);
  return true;
}

/// Ends the program when no window is left, after the events at hand: opening, backing up and updating lists
/// close windows and open them again in one go.
void WindowLoader::endWithoutWindows() {
  QTimer::singleShot(0, qApp, [this] {
    const auto windows = QApplication::topLevelWidgets();
    const bool anyVisible = std::any_of(windows.begin(), windows.end(),
                                        [](const QWidget* window) { return window->isVisible(); });
    if (!anyVisible && !session_->window) terminate_();
  });
}

TimerWindowController* WindowLoader::timerWindow() const { return open_->timer.get(); }

}  // namespace pendra
