#pragma once

#include <QString>

#include "document/AutoSave.h"
#include "document/BackupKeeper.h"

namespace pendra {

class ReadAhead;
class Session;
class UserDefaults;

/// Records are merged after each start, whatever was chosen before.
void mergeByDefault(UserDefaults& defaults);

/// Launch and quit: what happens once in a run of the program.
class Launch {
 public:
  explicit Launch(Session& session, SavePace pace = {})
      : session_(session), autoSave_(session, pace), backups_(session) {}

  /// The whole launch, in its order: preference, introduction, document, periodic save, identity, window. A
  /// `file` that was named at the start is opened in place of the last document; when it cannot be, or when
  /// the last document is out of reach, nothing else is put in its place. What is opened may have been read
  /// ahead.
  void launch(const QString& file = {}, ReadAhead* ahead = nullptr);
  /// Closes the document; false when the user cancelled. Ends the save timer when true.
  [[nodiscard]] bool mayEnd();

 private:
  [[nodiscard]] bool introductionIsDue() const;

  Session& session_;
  AutoSave autoSave_;
  BackupKeeper backups_;
};

}  // namespace pendra
