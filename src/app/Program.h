#pragma once
// The delegate owns what lives as long as the program and decides about its end. It does nothing for a
// document: those operations are functions over the session.

#include <QTimer>
#include <QVariantMap>
#include <functional>
#include <memory>
#include <vector>

#include "Commands.h"
#include "DocumentModel.h"
#include "Environment.h"
#include "InPanel.h"
#include "LinkServices.h"
#include "SignalWatcher.h"
#include "WindowRegistry.h"
#include "document/AwayWatch.h"
#include "document/IdleReminder.h"
#include "document/Launch.h"
#include "document/ReadAhead.h"
#include "platform/SingleInstance.h"
#include "ui_core/AskedOutside.h"
#include "ui_core/AwayNotice.h"
#include "ui_core/UndoHistory.h"

class QSessionManager;

namespace pendra {

/// One at a time; made after the QApplication and gone before it.
class Program {
 public:
  /// The environment must outlive it.
  explicit Program(Environment& environment);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  /// Launches into the last document, or into `file` when one is given; it may have been read ahead.
  void launch(const QString& file, ReadAhead* ahead = nullptr);
  /// Hides the timer window where a panel shows the program; whoever started it did not ask for a window.
  void goIntoPanel();
  /// A second start handed over what it was asked for; nothing of it only brings the windows to the front.
  void openFromOutside(const StartRequest& request);
  /// What such a start asked for while the program was ending, and nobody has done.
  [[nodiscard]] const std::optional<StartRequest>& wanted() const { return wanted_; }
  /// Does what the desktop's menu for the program offers; nothing for a name that is not in it.
  void act(const QString& action);

  /// Asks for the end of the program: the menu, the last window, SIGTERM, SIGINT. Does nothing while a
  /// modal question is open or when the user cancels.
  void terminate();
  /// Whether the program may end; when it may, the document is closed.
  [[nodiscard]] bool mayEnd();
  /// Stops what still runs and closes the connection to Vantor, just before the program ends.
  void prepareEnd();

  /// Why nothing may be changed from outside at this moment; empty when it may.
  [[nodiscard]] QString busyWith() const;
  /// Sends the open document's time without asking anything.
  [[nodiscard]] Result<QVariantMap> sendAll();

  [[nodiscard]] Session& session() { return session_; }
  [[nodiscard]] CommandTarget& commands() { return commands_; }
  [[nodiscard]] WindowRegistry& windows() { return windows_; }

 private:
  void endOfSession(QSessionManager& manager);
  void appearOnDesktop();
  void followKey();
  [[nodiscard]] bool isAsking() const;
  /// Carries out what the world asks for, a signal or a second start, once the open question is answered.
  void whenNothingIsAsked(std::function<void()> request);
  /// A signal came.
  void askedToEnd();
  void performWhatWaits();
  /// Nobody answered in time: stops what runs, stores everything and ends the program.
  void endUnasked();

  Environment& environment_;
  WindowRegistry windows_;
  Session session_;
  LinkServices link_;
  UndoHistory history_;
  Launch launch_;
  Commands commands_;
  AwayNotice awayNotice_;
  std::optional<AwayWatch> awayWatch_;
  std::optional<InPanel> inPanel_;
  std::optional<AskedOutside> askedOutside_;
  std::vector<Notifier::Subscription> keys_;
  IdleReminder reminder_;
  SignalWatcher signals_;
  std::vector<std::function<void()>> waits_;  ///< these requests, in the order in which they came
  std::optional<StartRequest> wanted_;
  QTimer waiting_;
  QTimer unanswered_;
  bool isTerminating_ = false;
};

}  // namespace pendra
