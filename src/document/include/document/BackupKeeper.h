#pragma once

#include <QDate>
#include <QTimer>

#include "document/Session.h"

namespace pendra {

/// Makes the backups that nobody asks for: shortly after a day's first change, when a document goes, and of
/// what a document was before it got a newer layout. Never inside an edit.
class BackupKeeper {
 public:
  /// How soon after a change, and how soon again after a failure, in milliseconds.
  struct Pace {
    std::chrono::milliseconds afterChange{std::chrono::seconds(2)};
    std::chrono::milliseconds afterFailure{std::chrono::hours(1)};
  };

  explicit BackupKeeper(Session& session) : BackupKeeper(session, Pace()) {}
  BackupKeeper(Session& session, Pace pace);

  void start();
  void stop();

 private:
  void followDocument();
  void changed();
  void makeDaily();
  [[nodiscard]] bool isWanted() const;
  [[nodiscard]] QDate today() const;

  Session& session_;
  Pace pace_;
  QTimer soon_;
  QDate done_;  ///< the day of which there is one
  Notifier::Subscription documents_;
  Notifier::Subscription leaving_;
  Subscription edits_;
};

}  // namespace pendra
