#pragma once
// The controller joins the window's controls to the window's logic and decides nothing: every rule stands in
// ui/core, in TimerState and its neighbours.

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <memory>

#include "document/Windows.h"
#include "ui_core/TimerState.h"

namespace pendra {

class CommandTarget;
class DisplayTick;
class EditorSheets;
class HaltedNotice;
class LogPaneView;
class QuickEntryRow;
class TimerWindow;
class Tracker;

/// The document's main window. Owned by the window loader; gone with its document.
class TimerWindowController final : public QObject, private TimerDisplay {
 public:
  /// Shows the window. `closed` is told before its document goes, at a moment when it may be destroyed later
  /// but not yet.
  TimerWindowController(Session& session, CommandTarget& target, std::function<void()> closed);
  ~TimerWindowController() override;

  [[nodiscard]] TimerState& state() { return state_; }
  [[nodiscard]] LogPaneView& log() { return *log_; }
  [[nodiscard]] TimerWindow& window() { return *window_; }
  /// Whether the activity table, not the log, had the keyboard focus last.
  [[nodiscard]] bool activitiesHadFocus() const { return !logHadFocus_; }

  /// Brings the window to the front, with the keyboard in the quick entry.
  void quickEntry();
  void addActivity();
  void editActivity();
  void editSelected();
  void editTimeEntry();
  /// Stores what is being typed into the log; false when that is refused, and the keyboard is there.
  [[nodiscard]] bool finishEditing();
  /// Asks where the selected entry is cut.
  void splitEntry();
  void deleteActivity();
  void exportTimeLog();
  /// Puts the keyboard into the field that searches the table which had it last.
  void find();

  void bringToFront();
  /// What has the keyboard has it again when the window comes back.
  void hide();
  /// Closes without asking, and the document with it.
  void close();

 private:
  void showElapsedTime(const QString& text) override;
  void showCustomerJobLabel(const QString& text) override;
  void showMainButton(bool running) override;
  void showIsLastEntry(bool isLastEntry) override;
  void showWhatRuns(const std::vector<RunningTimer>& timers) override;
  void hideSendTime() override;
  void showActivitySheet(bool forNew) override;

  void connectHeader();
  void connectControls();
  void connectRowMenus();
  void observeSession();
  void startUp();
  /// On a first run: the introduction, once the window is the active one and nothing stands over it.
  void introduce();
  void introduceWhenFree();
  /// Once: that there are statistics, and where they are switched off.
  void tellOfStatistics();
  void tick();
  void pressCell(int row, const QString& identifier);
  void showDocumentState();
  void leave();
  /// Made when the first of them is asked for: no window needs them to come up.
  [[nodiscard]] EditorSheets& editors();

  Session& session_;
  CommandTarget& target_;
  std::function<void()> closed_;
  TimerState state_;  // outlives the window, whose tables show its rows
  QuickEntryRow* quickEntry_;
  std::unique_ptr<TimerWindow> window_;
  QPointer<QWidget> keyboard_;  ///< of a hidden window; Qt hands it on where one is hidden before it was seen
  LogPaneView* log_;
  std::unique_ptr<EditorSheets> editors_;
  std::unique_ptr<HaltedNotice> halted_;
  std::unique_ptr<DisplayTick> tick_;
  QTimer introduction_;
  std::unique_ptr<Tracker> tracker_;
  bool logHadFocus_ = false;
  bool left_ = false;
  std::vector<Notifier::Subscription> observations_;
};

}  // namespace pendra
