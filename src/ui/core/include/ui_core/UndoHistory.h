#pragma once
// The steps of the open document as a person meets them: by name in the menu, and in a notice after what
// cannot be seen easily.

#include <QString>
#include <QTimer>
#include <chrono>

#include "document/Session.h"
#include "store/UndoStack.h"

namespace pendra {

/// Takes steps of the open document back and does them again. What was left alone, because it was sent or has
/// changed since, is named in the notice line. After something was completed or deleted, or after a change
/// that moved other entries too, a notice offers to take it back, until the next step or for `patience`;
/// after a step back with which time went, one says how much and offers to do it again.
class UndoHistory {
 public:
  /// The session must outlive it.
  explicit UndoHistory(Session& session, std::chrono::milliseconds patience = std::chrono::minutes(1));

  [[nodiscard]] bool canUndo() const;
  [[nodiscard]] bool canRedo() const;
  /// The names of the next steps; empty when there is none.
  [[nodiscard]] QString undoName() const;
  [[nodiscard]] QString redoName() const;
  /// Nothing happens without a step, nor while something is asked: the answer would be about another state.
  void undo();
  void redo();
  /// Says in a notice what the newest step has done, and offers to take it back.
  void offerUndo(const QString& sentence);
  /// Announces that another step is next.
  [[nodiscard]] Notifier& changes() { return changes_; }

 private:
  using Way = std::vector<Skipped> (UndoStack::*)();

  [[nodiscard]] UndoStack* stack() const;
  void follow();
  void stepsChanged(UndoStack::News news);
  void go(Way way, const QString& title);
  void offer(const QString& sentence, NoticeAction action);

  Session& session_;
  QTimer patience_;
  QString takenAway_;  ///< the time that went with the last edit
  QString runsOn_;
  QString sentence_;  ///< what the notice says of the edit that is about to become a step; empty: nothing
  Subscription edits_;
  Subscription steps_;
  Notifier::Subscription documents_;
  Notifier changes_;
};

}  // namespace pendra
