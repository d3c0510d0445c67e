#pragma once

#include <QStringList>
#include <deque>
#include <vector>

#include "platform/Alerts.h"
#include "support/Print.h"

namespace pendra {

/// Records every alert and answers from a script of button titles:
///
///     alerts.willAnswer({"Continue", "Cancel"});
///
/// An alert with one button needs no line in the script. An alert with more than the script foresees
/// fails the test and is answered with its last button.
class ScriptedAlerts final : public Alerts {
 public:
  void willAnswer(const QStringList& buttons);
  /// From now on sheets stay open until answerSheet().
  void holdSheets() { holdsSheets_ = true; }
  /// Answers the oldest open sheet with the button of this title.
  void answerSheet(const QString& button);

  /// Everything that was shown so far, sheets too, oldest first.
  [[nodiscard]] const std::vector<Alert>& shown() const { return shown_; }
  /// The message texts of what was shown.
  [[nodiscard]] QStringList messages() const;
  /// The alert shown last; a failed test and an empty alert when there was none.
  [[nodiscard]] Alert last() const;
  /// Answers left over in the script: zero when everything foreseen was asked.
  [[nodiscard]] std::size_t unasked() const { return script_.size(); }
  void forget() { shown_.clear(); }

  int runAlert(const Alert& alert) override;
  void beginSheet(const Alert& alert, std::function<void(int)> answered) override;

 private:
  struct OpenSheet {
    Alert alert;
    std::function<void(int)> answered;
  };
  int scriptedAnswer(const Alert& alert);

  std::deque<QString> script_;
  std::vector<Alert> shown_;
  std::deque<OpenSheet> openSheets_;
  bool holdsSheets_ = false;
};

}  // namespace pendra
