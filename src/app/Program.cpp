#include "Program.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QSessionManager>

#include "CommandLine.h"
#include "document/AutoSave.h"
#include "document/DocumentLoading.h"
#include "document/Documents.h"
#include "document/RunningTimers.h"
#include "document/Saving.h"
#include "document/SavingElsewhere.h"
#include "model/Model.h"
#include "orders/SendAll.h"
#include "platform/Preferences.h"
#include "platform/Resources.h"
#include "platform/Translation.h"
#include "ui/Activation.h"
#include "ui/IntroSheet.h"
#include "ui/LogPaneView.h"
#include "ui/TimerWindowController.h"
#include "ui_core/UnaskedEnd.h"

namespace pendra {

namespace {

/// How often a request that came while something was asked looks whether it has been answered.
constexpr std::chrono::milliseconds kBetweenLooks{200};
/// How long a question is waited for when the program was told to end.
constexpr std::chrono::seconds kUntilUnanswered{3};

/// Whether a sheet stands whose texts go with the program.
bool isTypedIntoSheet() {
  const auto all = QApplication::topLevelWidgets();
  return std::any_of(all.begin(), all.end(), [](const QWidget* top) {
    return top->isVisible() && top->isModal() && !qobject_cast<const QFileDialog*>(top) &&
           top->findChild<QLineEdit*>();
  });
}

/// A window that was hidden as soon as it came may be taken for the active one still.
bool isInFront() {
  const QWidget* window = QApplication::activeWindow();
  return window && window->isVisible();
}

}  // namespace

Program::Program(Environment& environment)
    : environment_(environment),
      session_(environment_.ports(windows_), loadObjectModel()),
      link_(session_),
      history_(session_),
      launch_(session_),
      commands_(
          session_, windows_, link_, history_, [this] { terminate(); }, environment_.key.get()),
      awayNotice_(session_, [this] { windows_.show(WindowKind::TimeAway); }),
      reminder_(session_),
      signals_([this] { askedToEnd(); }) {
  session_.requireEdits();
  if (environment_.idle && environment_.sleep) {
    awayWatch_.emplace(session_, *environment_.idle, *environment_.sleep);
  }
  environment_.alerts.setTimerWindow([this] {
    TimerWindowController* timer = windows_.timerWindow();
    return timer ? timer->log().window() : nullptr;
  });
  waiting_.setInterval(kBetweenLooks);
  QObject::connect(&waiting_, &QTimer::timeout, &waiting_, [this] { performWhatWaits(); });
  unanswered_.setSingleShot(true);
  unanswered_.setInterval(kUntilUnanswered);
  QObject::connect(&unanswered_, &QTimer::timeout, &unanswered_, [this] { endUnasked(); });
  windows_.connectTo(session_, commands_, link_, history_, [this] { terminate(); });
  // Nobody waits for that, but for the window.
  QTimer::singleShot(0, &waiting_, [this] { appearOnDesktop(); });
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, qApp,
                   [this](QSessionManager& manager) { endOfSession(manager); });
}

/// What the desktop shows of the program outside of its windows.
void Program::appearOnDesktop() {
  if (environment_.panel) {
    inPanel_.emplace(session_, *environment_.panel, windows_, commands_, [this] { return busyWith(); });
  }
  followKey();
  if (!environment_.notes) return;
  askedOutside_.emplace(session_, *environment_.notes,
                        AskedOutside::World{.isSeen = [] { return isInFront(); },
                                            .open = [this] { windows_.bringToFront(); },
                                            .busyWith = [this] { return busyWith(); }});
  QObject::connect(qApp, &QGuiApplication::applicationStateChanged, &waiting_,
                   [this](Qt::ApplicationState state) {
                     if (askedOutside_ && state == Qt::ApplicationActive) askedOutside_->seen();
                   });
}

/// One that was chosen before is taken up again as soon as the desktop offers any.
void Program::followKey() {
  GlobalKey* key = environment_.key.get();
  if (!key || !inPanel_) return;
  keys_.push_back(key->presses().observe([this] { inPanel_->startOrStop(); }));
  const auto takeUp = [this, key] {
    if (key->isOffered() && environment_.defaults.boolean(preferences::kGlobalKey))
      key->choose(whatTheKeyDoes());
  };
  keys_.push_back(key->changes().observe(takeUp));
  takeUp();
}

Program::~Program() {
  keys_.clear();
  inPanel_.reset();
  askedOutside_.reset();
  windows_.closeAll();
  environment_.alerts.setTimerWindow({});
}

void Program::launch(const QString& file, ReadAhead* ahead) {
  tellOfUnaskedEnd(session_);  // what is said of the document while it opens stands before it
  launch_.launch(file, ahead);
}

void Program::goIntoPanel() {
  if (environment_.panel && environment_.panel->isThere()) windows_.hideTimerWindow();
}

void Program::openFromOutside(const StartRequest& request) {
  wanted_ = request;
  signals_.hear();  // one that was sent before must not end what this start has been told is taken care of
  if (isTerminating_) return;
  if (request.action == actions::kStopAll) {
    tellArrived(request.activation);
  } else {
    windows_.bringToFront(request.activation);
  }
  act(request.action);
  whenNothingIsAsked([this, path = request.path] {
    wanted_.reset();
    if (!path.isEmpty()) commands_.openRecent(path);
  });
}

void Program::act(const QString& action) {
  if (action == actions::kStopAll) whenNothingIsAsked([this] { stopAllActivities(session_); });
  if (action == actions::kQuickEntry) {
    whenNothingIsAsked([this] { commands_.perform(Command::QuickEntry, nullptr); });
  }
}

void Program::askedToEnd() {
  periodicSave(session_);  // who sends a signal may not wait for the answer to a question
  link_.progress.cancel();
  if (!unanswered_.isActive()) unanswered_.start();
  whenNothingIsAsked([this] {
    terminate();
    // An answer has come, and may have been no; where the document could not be saved nobody was asked.
    const OpenDocument* document = session_.document();
    if (!document || document->told.closeRefusedAt != session_.context()->changeCount()) unanswered_.stop();
  });
}

void Program::endUnasked() {
  isTerminating_ = true;
  const bool losesTyping = !windows_.finishEditing() || isTypedIntoSheet();
  stopUnasked(session_, losesTyping);
  prepareEnd();
  saveContextOrLog(session_);
  rescue(session_);
  QCoreApplication::exit(0);  // of every loop, that of the question too
}

bool Program::isAsking() const {
  // A panel on a window may be asking something of its own; its window cannot be closed under it. The
  // introduction asks nothing.
  const QWidget* panel = QApplication::activeModalWidget();
  return environment_.modals.isModal() || (panel && !dynamic_cast<const IntroSheet*>(panel));
}

QString Program::busyWith() const {
  if (environment_.modals.asksVantor()) return tr("Vantor is being asked");
  return isAsking() ? tr("a question waits in Pendra’s window") : QString();
}

Result<QVariantMap> Program::sendAll() {
  return orders::sendAll({session_, environment_.unasked, link_.checks, link_.lists});
}

void Program::whenNothingIsAsked(std::function<void()> request) {
  if (!isAsking()) return request();
  waits_.push_back(std::move(request));
  waiting_.start();
}

void Program::performWhatWaits() {
  if (isAsking()) return;
  waiting_.stop();
  for (auto& request : std::exchange(waits_, {})) whenNothingIsAsked(std::move(request));
}

void Program::terminate() {
  if (isTerminating_ || environment_.modals.isModal() || !mayEnd()) return;
  isTerminating_ = true;
  prepareEnd();
  QCoreApplication::exit(0);
}

bool Program::mayEnd() { return launch_.mayEnd(); }

void Program::prepareEnd() {
  stopAllActivities(session_);
  link_.checks.closeConnection();
}

void Program::endOfSession(QSessionManager& manager) {
  if (!manager.allowsInteraction()) {
    stopUnasked(session_, isTypedIntoSheet());
    saveContextOrLog(session_);
    return rescue(session_);
  }
  periodicSave(session_);
  unanswered_.start();
  const bool mayEndNow = !isAsking() && mayEnd();
  unanswered_.stop();
  if (isTerminating_ || mayEndNow) {
    manager.release();
    prepareEnd();
  } else {
    manager.cancel();
  }
}

}  // namespace pendra
