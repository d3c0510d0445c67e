#include "WindowRegistry.h"

#include <QApplication>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QTimer>

#include "LinkServices.h"
#include "document/DocumentLoading.h"
#include "document/Session.h"
#include "platform/Resources.h"
#include "ui/Activation.h"
#include "ui/CommandTarget.h"
#include "ui/CompletedWindow.h"
#include "ui/FieldUndo.h"
#include "ui/ListWindows.h"
#include "ui/LogPaneView.h"
#include "ui/PreferencesWindow.h"
#include "ui/ReportWindow.h"
#include "ui/RestoreWindow.h"
#include "ui/RowTableView.h"
#include "ui/SetupController.h"
#include "ui/ShellWindows.h"
#include "ui/TimeAwayWindow.h"
#include "ui/TimerWindowController.h"
#include "ui_core/ShellCommands.h"
#include "ui_core/UndoHistory.h"

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

/// Only a window that takes drops is told of what is dragged over it, beside where its fields are.
void takeDrops(QWidget& shown) {
  if (shown.windowType() == Qt::Window) shown.setAcceptDrops(true);
}

/// The document that is dragged, where it is one file alone; empty for anything else.
QString draggedDocument(const QMimeData& data) {
  const QList<QUrl> addresses = data.urls();
  if (addresses.size() != 1 || !addresses.front().isLocalFile()) return {};
  const QString path = addresses.front().toLocalFile();
  return path.endsWith(u".pdr") || path.endsWith(u".pdrbackup") ? path : QString();
}

}  // namespace

/// The windows that are open, and those that closed and have not gone yet.
struct WindowRegistry::Open {
  std::unique_ptr<TimerWindowController> timer;
  std::unique_ptr<SetupController> setup;
  std::unique_ptr<AboutBox> about;
  std::unique_ptr<WelcomeWindow> welcome;
  std::unique_ptr<ListEditorWindow> customers;
  std::unique_ptr<ListEditorWindow> services;
  std::unique_ptr<PreferencesWindow> preferences;
  std::unique_ptr<RestoreWindow> restore;
  std::unique_ptr<TimeAwayWindow> timeAway;
  std::unique_ptr<ReportWindow> report;
  std::unique_ptr<CompletedWindow> completed;
  QObject retired;
};

WindowRegistry::WindowRegistry() : open_(std::make_unique<Open>()) {}
WindowRegistry::~WindowRegistry() = default;

void WindowRegistry::closeAll() { open_ = std::make_unique<Open>(); }

template <class Window>
void WindowRegistry::retire(std::unique_ptr<Window>& window) {
  if (window) new Retired(std::shared_ptr<Window>(std::move(window)), &open_->retired);
}

void WindowRegistry::connectTo(Session& session, CommandTarget& target, LinkServices& link,
                               UndoHistory& history, std::function<void()> terminate) {
  link_ = &link;
  history_ = &history;
  session_ = &session;
  target_ = &target;
  terminate_ = std::move(terminate);
  qApp->installEventFilter(this);
}

WindowFrame WindowRegistry::frame() const { return {*session_, *target_}; }

template <class Window, class Make>
void WindowRegistry::open(std::unique_ptr<Window>& place, const Make& make) {
  if (!place) {
    place = make();
    place->setClosed([this, &place] { retire(place); });
  }
  place->bringToFront();
}

void WindowRegistry::show(WindowKind kind) {
  switch (kind) {
    case WindowKind::Timer:
      return open_->timer ? open_->timer->bringToFront() : makeTimerWindow();
    case WindowKind::Setup:
      return open(open_->setup,
                  [this] { return std::make_unique<SetupController>(frame(), link_->checks, link_->lists); });
    case WindowKind::CustomerList:
      return open(open_->customers, [this] { return makeCustomerList(frame()); });
    case WindowKind::ServicesList:
      return open(open_->services, [this] { return makeServicesList(frame()); });
    case WindowKind::Welcome:
      return open(open_->welcome, [this] { return std::make_unique<WelcomeWindow>(frame()); });
    case WindowKind::About:
      return open(open_->about, [this] { return std::make_unique<AboutBox>(frame(), versionText()); });
    case WindowKind::Preferences:
      return open(open_->preferences, [this] { return std::make_unique<PreferencesWindow>(frame()); });
    case WindowKind::Restore:
      return open(open_->restore, [this] {
        return std::make_unique<RestoreWindow>(
            frame(), [this](const QString& sentence) { history_->offerUndo(sentence); });
      });
    case WindowKind::TimeAway:
      return open(open_->timeAway, [this] { return std::make_unique<TimeAwayWindow>(frame()); });
    case WindowKind::Report:
      return open(open_->report, [this] { return makeReport(); });
    case WindowKind::CompletedActivities:
      return open(open_->completed, [this] { return std::make_unique<CompletedWindow>(frame()); });
  }
}

AppWindow* WindowRegistry::windowBeside(WindowKind kind) const {
  switch (kind) {
    case WindowKind::Setup:
      return open_->setup && !open_->setup->isDone() ? open_->setup.get() : nullptr;
    case WindowKind::CustomerList:
      return open_->customers.get();
    case WindowKind::ServicesList:
      return open_->services.get();
    case WindowKind::Welcome:
      return open_->welcome.get();
    case WindowKind::About:
      return open_->about.get();
    case WindowKind::Preferences:
      return open_->preferences.get();
    case WindowKind::Restore:
      return open_->restore.get();
    case WindowKind::TimeAway:
      return open_->timeAway.get();
    case WindowKind::Report:
      return open_->report.get();
    case WindowKind::CompletedActivities:
      return open_->completed.get();
    case WindowKind::Timer:
      break;
  }
  return nullptr;
}

bool WindowRegistry::isOpen(WindowKind kind) const {
  return kind == WindowKind::Timer ? open_->timer != nullptr : windowBeside(kind) != nullptr;
}

void WindowRegistry::close(WindowKind kind) {
  if (AppWindow* window = windowBeside(kind)) return window->closeUnasked();
  if (kind == WindowKind::Timer && open_->timer) open_->timer->close();
}

bool WindowRegistry::finishEditing() {
  return (!open_->timer || open_->timer->finishEditing()) &&
         (!open_->customers || open_->customers->finishEditing()) &&
         (!open_->services || open_->services->finishEditing());
}

void WindowRegistry::makeTimerWindow() {
  open_->timer =
      std::make_unique<TimerWindowController>(*session_, *target_, [this] { retire(open_->timer); });
  close(WindowKind::Welcome);  // where to begin has been found
}

/// What is pressed in it is listed in the timer window.
std::unique_ptr<ReportWindow> WindowRegistry::makeReport() {
  const auto showInLog = [this](QDate first, QDate last, const std::optional<QString>& customer) {
    if (!open_->timer) return;
    open_->timer->state().log().showOnly(first, last, customer);
    open_->timer->bringToFront();
    open_->timer->log().table().setFocus();
  };
  return std::make_unique<ReportWindow>(frame(), showInLog);
}

bool WindowRegistry::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Hide && watched->isWidgetType() &&
      static_cast<QWidget*>(watched)->isWindow()) {
    endWithoutWindows();
  }
  if (event->type() == QEvent::Show && watched->isWidgetType()) takeDrops(*static_cast<QWidget*>(watched));
  if (event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove ||
      event->type() == QEvent::Drop) {
    return takesDocument(*event);
  }
  if (event->type() == QEvent::Close && hideInstead(watched, *event)) return true;
  if (belongsToMenu(*event)) return true;
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F1) {
    return helpFor(watched);
  }
  return false;
}

bool WindowRegistry::isHidden() const { return open_->timer && !open_->timer->log().window()->isVisible(); }

void WindowRegistry::hideTimerWindow() {
  if (open_->timer) open_->timer->hide();
}

bool WindowRegistry::hideInstead(QObject* watched, QEvent& closing) {
  if (!open_->timer || watched != open_->timer->log().window() || !keeps_ || !keeps_()) return false;
  closing.ignore();
  hideTimerWindow();
  return true;
}

void WindowRegistry::bringToFront(const QString& activation) {
  const bool asks = QApplication::activeModalWidget() != nullptr;
  if (!asks) ensureAWindow(*session_);
  if (!asks && isHidden()) show(WindowKind::Timer);
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (!window->isVisible() || window->windowType() == Qt::Popup) continue;
    window->raise();
    activate(*window, activation);
  }
  tellArrived(activation);
}

/// A document that is dragged over a window opens, wherever it is dropped: a field would take its address for
/// a text. While something is asked nothing is taken.
bool WindowRegistry::takesDocument(QEvent& event) {
  auto& drag = static_cast<QDropEvent&>(event);
  const QString path = draggedDocument(*drag.mimeData());
  if (path.isEmpty()) return false;
  const bool mayOpen = !QApplication::activeModalWidget();
  if (mayOpen) drag.setDropAction(Qt::CopyAction);
  drag.setAccepted(mayOpen);
  // Whoever drops waits for the end of the drop, and must not wait for the end of a question.
  if (mayOpen && event.type() == QEvent::Drop) {
    QTimer::singleShot(0, this, [this, path] { target_->openRecent(path); });
  }
  return true;
}

/// F1 where no menu bar answers it: in a sheet, in a window without one, and on an item of an open menu.
bool WindowRegistry::helpFor(QObject* watched) {
  if (const auto* menu = qobject_cast<QMenu*>(watched)) {
    const QAction* item = menu->activeAction();
    showHelp(item ? item->property("helpAnchor").toString() : QString(), session_->ports().workspace,
             resourceFolder());
    return true;
  }
  QWidget* front = QApplication::activeModalWidget();
  if (!front) front = QApplication::activeWindow();
  if (!front || !watched->isWidgetType() || front->findChild<QMenuBar*>()) return false;
  target_->perform(Command::Help, front);
  return true;
}

/// Ends the program when no window is left, after the events at hand: opening, backing up and updating lists
/// close windows and open them again in one go.
void WindowRegistry::endWithoutWindows() {
  QTimer::singleShot(0, qApp, [this] {
    const auto windows = QApplication::topLevelWidgets();
    const bool anyVisible = std::any_of(windows.begin(), windows.end(),
                                        [](const QWidget* window) { return window->isVisible(); });
    if (!anyVisible && !isOpen(WindowKind::Timer)) terminate_();
  });
}

TimerWindowController* WindowRegistry::timerWindow() const { return open_->timer.get(); }
ListEditor* WindowRegistry::customerList() const { return open_->customers.get(); }
ListEditor* WindowRegistry::servicesList() const { return open_->services.get(); }

ListEditorWindow* WindowRegistry::listInFront() const {
  const bool servicesFirst = open_->services && (!open_->customers || open_->services->isActiveWindow());
  return servicesFirst ? open_->services.get() : open_->customers.get();
}

}  // namespace pendra
