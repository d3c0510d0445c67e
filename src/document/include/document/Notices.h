#pragma once
// What is worth knowing but has no alert of its own is a notice: it stands in the windows' notice line,
// never blocks, and goes when it is dismissed, acted on, or replaced by one under the same key.

#include <QString>
#include <functional>
#include <vector>

#include "platform/Notifier.h"

namespace pendra {

struct NoticeAction {
  QString title;
  std::function<void()> run;
  /// Whether the notice has nothing more to ask once the action has run; without it, it has not.
  std::function<bool()> isDone = {};
};

/// One thing to know. The text names the file or record and the reason.
struct Notice {
  QString key;  ///< the subject, "save", "backup"; a later notice of one subject replaces the earlier
  QString text;
  std::vector<NoticeAction> actions;
  bool ofDocument = false;         ///< it goes with the open document
  bool onlyInTimerWindow = false;  ///< it is of no use beside another window
  bool asks = false;               ///< it waits for an answer, also of who does not look at a window
  bool comesLast = false;          ///< it stands behind all others that ask
};

/// The notices that stand at this moment, the oldest first.
class Notices {
 public:
  void post(Notice notice);
  /// Removes the notice of that subject, if it stands.
  void withdraw(const QString& key);
  /// Does what an action of the standing notice of that subject does; the notice goes unless it goes on
  /// asking.
  void press(const QString& key, std::size_t action);
  /// Removes those that are about the document that was open.
  void withdrawOfDocument();
  [[nodiscard]] const std::vector<Notice>& standing() const { return standing_; }
  /// Announces every change of what stands.
  [[nodiscard]] Notifier& changes() { return changes_; }

 private:
  void withdrawWhere(const std::function<bool(const Notice&)>& goes);

  std::vector<Notice> standing_;
  Notifier changes_;
};

}  // namespace pendra
