#pragma once

#include <QTimer>
#include <chrono>

#include "platform/Notifier.h"
#include "store/Observers.h"

namespace pendra {

class Session;

/// How often is saved, and how soon what could not be stored is tried again.
struct SavePace {
  std::chrono::milliseconds between{std::chrono::seconds(120)};
  std::chrono::milliseconds untilAnotherTry{std::chrono::seconds(1)};
};

/// The save of every 120 seconds, also while something is asked, and the one of every second while something
/// could not be stored. Does nothing until it is started.
class AutoSave {
 public:
  AutoSave(Session& session, SavePace pace);

  void start();
  void stop();

 private:
  void tryAgainIfNeeded();
  void followDocument();
  /// As soon as time runs that no sign of life covers: the next one may be two minutes away.
  void giveFirstSign();

  Session& session_;
  SavePace pace_;
  QTimer periodic_;
  QTimer again_;
  QTimer sign_;
  Notifier::Subscription attempts_;
  Notifier::Subscription documents_;
  Subscription edits_;
};

/// Stores that the program is alive, if time runs; what is being timed is known up to this moment should it
/// be the last. Stores no length.
void giveSignOfLife(Session& session);

/// The save of every 120 seconds: a sign of life, and what is outstanding. Running timers run on.
void periodicSave(Session& session);

}  // namespace pendra
