#include "ui/TimerWindowController.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>

#include "ActivityPane.h"
#include "GlanceView.h"
#include "LatestMenu.h"
#include "MenuButton.h"
#include "QuickEntryRow.h"
#include "RunningPills.h"
#include "TimerHeader.h"
#include "TimerWindow.h"
#include "analytics/Consent.h"
#include "analytics/Disclosure.h"
#include "analytics/StartTracking.h"
#include "analytics/TrackerNotifications.h"
#include "document/DocumentClosing.h"
#include "document/OpenDocument.h"
#include "link/UnknownFates.h"
#include "platform/Preferences.h"
#include "platform/Resources.h"
#include "platform/Text.h"
#include "ui/Buttons.h"
#include "ui/DisplayTick.h"
#include "ui/EditorSheets.h"
#include "ui/GradientDividerSplitView.h"
#include "ui/IntroSheet.h"
#include "ui/LogPaneView.h"
#include "ui/MenuBar.h"
#include "ui/RowMenu.h"
#include "ui/RowTableView.h"
#include "ui/SearchField.h"
#include "ui/SplitSheet.h"
#include "ui/TableMemory.h"
#include "ui/Theme.h"
#include "ui/WindowPlace.h"
#include "ui/WindowTitle.h"
#include "ui_core/DeletePrompts.h"
#include "ui_core/DocumentState.h"
#include "ui_core/HaltedNotice.h"
#include "ui_core/HelpAnchors.h"
#include "ui_core/LogCorrections.h"
#include "ui_core/ShellCommands.h"

namespace pendra {

namespace {

constexpr std::chrono::milliseconds kIntroDelay{500};

std::unique_ptr<TimerWindow> makeWindow(Session& session, QWidget* quickEntry, std::function<void()> closed) {
  auto window = std::make_unique<TimerWindow>(
      session.notices(), quickEntry, [&session] { return mayCloseWindow(session); }, std::move(closed));
  new WindowPlace(*window, session.ports().defaults, preferences::kTimerWindowPlace);
  return window;
}

/// The key of a command as the desktop writes it; empty where no menu has the command.
QString keyOf(const CommandTarget& target, Command command) {
  for (const Menu& menu : target.menus()) {
    for (const CommandRow& row : menu.rows) {
      if (row.command == command)
        return QKeySequence(keysOf(row).value(0)).toString(QKeySequence::NativeText);
    }
  }
  return {};
}

CommandGroups activityCommands() {
  return {{Command::EditActivity, Command::ToggleTimer},
          {Command::Copy, Command::Favourite, Command::MarkComplete},
          {Command::Delete}};
}

CommandGroups entryCommands() {
  return {{Command::EditSelected, Command::StartAgain},
          {Command::SplitEntry, Command::DuplicateEntries, Command::MergeEntries},
          {Command::Copy, Command::MakeCurrent, Command::SendSelected, Command::MarkUnsent},
          {Command::Delete}};
}

}  // namespace

TimerWindowController::TimerWindowController(Session& session, CommandTarget& target,
                                             std::function<void()> closed)
    : session_(session),
      target_(target),
      closed_(std::move(closed)),
      state_(session, *this),
      quickEntry_(new QuickEntryRow(state_, keyOf(target, Command::QuickEntry))),
      window_(makeWindow(session, quickEntry_, [this] { leave(); })),
      log_(new LogPaneView(session, state_)) {
  window_->setLog(log_, log_->makeSummary(), new GlanceView(state_.hours(), session));
  window_->setMenuBar(new MenuBar(target, window_.get()));
  window_->activityTable->setTable(state_.rows(), state_.selection());
  window_->activities->follow(state_);
  quickEntry_->addTool(&window_->activities->searchField());
  connectHeader();
  window_->activityTable->standOnGrid();
  window_->activityTable->setSpaceColumn(QStringLiteral("startstop"));
  new TableMemory(*window_->activityTable, session.ports().defaults, preferences::kActivityColumns);
  connectControls();
  observeSession();
  startUp();
}

TimerWindowController::~TimerWindowController() {
  window_->hide();  // before the rows go that its tables show
}

void TimerWindowController::connectControls() {
  const auto perform = [this](Command command) {
    return [this, command] { target_.perform(command, window_.get()); };
  };
  RowTableView* table = window_->activityTable;
  connect(window_->activities, &ActivityPane::addAsked, this, perform(Command::AddActivity));
  connect(table, &RowTableView::emptyHelpClicked, this,
          [this] { showHelp(help::kFirstDay, session_.ports().workspace, resourceFolder()); });
  connect(table, &RowTableView::cellPressed, this, &TimerWindowController::pressCell);
  connect(table, &RowTableView::rowActivated, this, perform(Command::EditActivity));
  connect(table, &RowTableView::headClicked, this, [this](const QString& identifier) {
    if (identifier == u"startstop") state_.toggleSelected();
  });
  connect(log_, &LogPaneView::editTimeEntry, this, &TimerWindowController::editTimeEntry);
  connectRowMenus();
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, const QWidget* now) {
    if (!now) return;
    // A menu or a tool takes the focus for a moment; what counts is the table that had it last.
    const ActivityPane& activities = *window_->activities;
    if (activities.isAncestorOf(now) || now == &activities.searchField()) {
      logHadFocus_ = false;
    } else if (window_->splitView->isAncestorOf(now)) {
      logHadFocus_ = true;
    }
  });
}

void TimerWindowController::connectHeader() {
  const TimerHeader& header = *window_->header;
  const auto performs = [this](const QAbstractButton* button, Command command) {
    connect(button, &QAbstractButton::clicked, this,
            [this, command] { target_.perform(command, window_.get()); });
  };
  performs(header.startStopButton, Command::ToggleTimer);
  performs(header.addActivityButton, Command::AddActivity);
  performs(header.submitTimeButton, Command::SendSelected);
  const auto openLatest = [this] {
    QMenu* menu = makeLatestMenu(*window_, state_);
    addCommands(*menu, target_, *window_, {{Command::StartEarlier}});
    const QWidget& below = *window_->header->latestButton;
    menu->popup(below.mapToGlobal(QPoint(0, below.height())));
  };
  connect(header.latestButton, &QAbstractButton::clicked, this, openLatest);
  connect(header.startStopButton, &BigButton::menuAsked, this, openLatest);
  connect(header.pills, &RunningPills::stopAsked, this,
          [this](Activity* activity) { state_.toggle(*activity); });
  connect(header.pills, &RunningPills::selectAsked, this,
          [this](const Activity* activity) { state_.selectActivity(*activity); });
}

void TimerWindowController::connectRowMenus() {
  connect(window_->activityTable, &RowTableView::rowMenuWanted, this,
          [this](const QPoint& at) { makeRowMenu(target_, *window_, activityCommands())->popup(at); });
  connect(&log_->table(), &RowTableView::rowMenuWanted, this, [this](const QPoint& at) {
    QMenu* menu = makeRowMenu(target_, *window_, entryCommands(), {{Command::StartAgain, Qt::Key_Space}});
    menu->addSeparator();
    log_->table().addColumnChoices(*menu->addMenu(tr("Columns")));
    menu->popup(at);
  });
  connect(&log_->table(), &RowTableView::spacePressed, this,
          [this] { target_.perform(Command::StartAgain, window_.get()); });
}

void TimerWindowController::observeSession() {
  observations_.push_back(session_.saveStateChanges().observe([this] { showDocumentState(); }));
}

void TimerWindowController::startUp() {
  state_.rebuild();
  [[maybe_unused]] const auto notApplied = session_.ports().defaults.text(preferences::kSortOrderWindow);
  showElapsedTime(QStringLiteral("00:00:00"));
  state_.updateCustomerJobLabel();
  state_.updateMainButton();
  showDocumentState();
  state_.log().rebuild();
  state_.log().reloadNames();
  tick_ = std::make_unique<DisplayTick>(session_, *window_, [this] { tick(); });
  window_->activityTable->setFocus();
  bringToFront();
  introduce();
  tellOfStatistics();
  halted_ = std::make_unique<HaltedNotice>(session_, [this](TimeEntry& entry) {
    state_.log().selectEntry(&entry);
    state_.setCurrentEntry(&entry);
    editors().showTimeEntrySheet();
  });
  if (session_.context()) postUnknownFates(session_);
  tracker_ = startTracking({session_.ports().notifications, session_.ports().workspace,
                            session_.ports().defaults, session_.masterDoNotTrackEvents});
}

void TimerWindowController::introduce() {
  if (!std::exchange(session_.showIntroSheet, false)) return;
  connect(&introduction_, &QTimer::timeout, this, &TimerWindowController::introduceWhenFree);
  introduction_.start(kIntroDelay);
}

void TimerWindowController::introduceWhenFree() {
  const auto context = session_.context();
  const bool hasBegun = !context || !context->all<Activity>().empty();
  if (!hasBegun && (!window_->isActiveWindow() || QApplication::activeModalWidget())) return;
  introduction_.stop();
  session_.ports().defaults.setBoolean(preferences::kIntroduced, true);
  if (!hasBegun) (new IntroSheet(window_.get()))->show();
}

void TimerWindowController::tellOfStatistics() {
  Consent consent(session_.ports().defaults);
  if (!areStatisticsInstalled() || !consent.isNoticeDue()) return;
  consent.noticeShown();
  session_.notices().post(
      {.key = QStringLiteral("statistics"),
       .text = tr("Pendra sends usage statistics, without anything that you typed. You can switch them off."),
       .actions = {{tr("Preferences…"),
                    [&target = target_] { target.perform(Command::Preferences, nullptr); }},
                   {tr("OK"), [consent]() mutable { consent.noticeAnswered(); }}},
       .onlyInTimerWindow = true});
}

void TimerWindowController::tick() {
  if (!session_.ports().modals.isModal()) state_.updateTimeDisplay();
}

void TimerWindowController::pressCell(int row, const QString& identifier) {
  window_->activityTable->selectRow(row);
  if (identifier == u"startstop") state_.toggleSelected();
  if (identifier == u"favourite") state_.toggleFavourite();
  if (identifier == u"edit") target_.perform(Command::EditActivity, window_.get());
  if (identifier == u"complete") state_.markSelectedCompleted();
}

void TimerWindowController::quickEntry() {
  bringToFront();
  quickEntry_->focusField();
}

void TimerWindowController::addActivity() {
  session_.ports().notifications.post(tracker_notifications::kTracker, tracker_notifications::kAddActivity);
  showActivitySheet(true);
}

void TimerWindowController::editActivity() {
  if (state_.currentActivity()) showActivitySheet(false);
}

void TimerWindowController::editSelected() {
  if (activitiesHadFocus()) {
    editActivity();
  } else {
    editors().showTimeEntrySheet();
  }
}

void TimerWindowController::editTimeEntry() {
  if (state_.log().selectedCount() == 1) editors().showTimeEntrySheet();
}

bool TimerWindowController::finishEditing() { return log_->table().finishEditing(); }

void TimerWindowController::splitEntry() {
  TimeEntry* entry = state_.currentEntry();
  if (entry && whyNot(Correction::Split, state_.log()).isEmpty()) {
    SplitSheet(session_, *entry, window_.get()).run();
  }
}

void TimerWindowController::deleteActivity() {
  if (activitiesHadFocus()) {
    askToDeleteActivity(state_);
  } else {
    askToDeleteEntries(state_);
  }
}

void TimerWindowController::find() {
  activitiesHadFocus() ? beginSearch(window_->activities->searchField()) : log_->find();
}

void TimerWindowController::exportTimeLog() { log_->exportTimeLog(); }

void TimerWindowController::showActivitySheet(bool forNew) { editors().showActivitySheet(forNew); }

EditorSheets& TimerWindowController::editors() {
  if (!editors_) editors_ = std::make_unique<EditorSheets>(state_, target_, *window_);
  return *editors_;
}

void TimerWindowController::bringToFront() {
  window_->show();
  window_->raise();
  window_->activateWindow();
  if (keyboard_) keyboard_->setFocus();
  keyboard_.clear();
}

void TimerWindowController::hide() {
  keyboard_ = window_->focusWidget();
  window_->hide();
}

void TimerWindowController::close() {
  window_->hide();
  leave();
}

void TimerWindowController::leave() {
  if (std::exchange(left_, true)) return;
  tick_.reset();
  introduction_.stop();
  observations_.clear();
  if (tracker_) tracker_->invalidate();
  closed_();
  closeAfterWindow(session_);
}

void TimerWindowController::showDocumentState() {
  showWhatRuns(state_.whatRuns());  // the document may have another name
  const QString text = documentStateText(session_.saveState(), session_.ports().calendar);
  window_->documentState->setText(text);
  window_->documentState->setAccessibleDescription(text);
}

void TimerWindowController::showElapsedTime(const QString& text) { window_->header->showElapsedTime(text); }
void TimerWindowController::showCustomerJobLabel(const QString& text) { window_->header->showName(text); }
void TimerWindowController::showMainButton(bool running) { window_->header->showRunning(running); }
void TimerWindowController::showIsLastEntry(bool isLastEntry) {
  window_->header->showIsLastEntry(isLastEntry);
}

void TimerWindowController::showWhatRuns(const std::vector<RunningTimer>& timers) {
  const QString name = session_.document() ? session_.document()->displayName() : QString();
  const QString runs = runningTitle(timers);
  const QString title = runs.isEmpty() ? name : formatted(u"%@ - %@", {runs, name});
  if (window_->windowTitle() != title) setPlainTitle(*window_, title);
  if (window_->accessibleName() != name) window_->setAccessibleName(name);
  std::vector<RunningTimer> others = timers;
  std::erase_if(others, [selected = state_.selectedActivity()](const RunningTimer& timer) {
    return timer.activity == selected;
  });
  window_->header->pills->showTimers(std::move(others));
}

void TimerWindowController::hideSendTime() {
  window_->header->submitTimeButton->hide();
  if (editors_) editors_->hideSendingLabel();
}

}  // namespace pendra
