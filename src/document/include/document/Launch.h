#pragma once

#include <QTimer>

namespace pendra {

class Session;

/// Launch and quit: what happens once in a run of the program.
class Launch {
 public:
  explicit Launch(Session& session);

  /// The whole launch, in its order: preference, introduction, document, halting, save timer, identity,
  /// window. A `file` that was named at the start is opened in place of the last document.
  void launch(const QString& file = {});
  /// Closes the document; false when the user cancelled. Ends the save timer when true.
  [[nodiscard]] bool mayEnd();

 private:
  void saveTimerFired();
  [[nodiscard]] bool introductionIsDue() const;

  Session& session_;
  QTimer saveTimer_;
};

}  // namespace pendra
