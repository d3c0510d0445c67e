#pragma once
// A step keeps what an edit changed and the objects that it deleted themselves. Taking it back is an edit of
// its own, whose record is the step that does it again; nothing is taken back that has moved on since.

#include <QString>
#include <deque>
#include <functional>
#include <vector>

#include "store/EditRecord.h"
#include "store/Observers.h"

namespace pendra {

class ObjectContext;

/// Something that was not taken back, or not done again: it has changed since, its time is fixed, or what it
/// needs has gone.
struct Skipped {
  const EntityDescriptor* entity;
  qint64 id;
  const PropertyDescriptor* property;  ///< none when the object itself should have come or gone
  Ref<ManagedObject> object;           ///< none when it is not in the document
};

/// The steps of a context that can be taken back, the newest hundred.
class UndoStack {
 public:
  static constexpr std::size_t kMostSteps = 100;

  explicit UndoStack(ObjectContext& context) : context_(context) {}

  [[nodiscard]] bool canUndo() const { return !done_.empty(); }
  [[nodiscard]] bool canRedo() const { return !undone_.empty(); }
  /// The name of the edit that `undo` takes back; empty when there is none.
  [[nodiscard]] QString undoName() const { return canUndo() ? done_.back().name : QString(); }
  [[nodiscard]] QString redoName() const { return canRedo() ? undone_.back().name : QString(); }
  /// Takes the newest step back, announced and stored like an edit, and answers what it left alone. Nothing
  /// happens without a step. Never inside an edit.
  std::vector<Skipped> undo();
  /// Does the step again that was taken back last.
  std::vector<Skipped> redo();
  void clear();

  /// What has become of the steps.
  enum class News {
    Added,   ///< an edit has added one
    Changed  ///< one was taken back or done again, or steps have gone
  };
  /// Tells of every change of the steps, after it has been stored.
  [[nodiscard]] Subscription observe(std::function<void(News)> told) {
    return observers_.add(std::move(told));
  }

 private:
  friend class Editing;
  friend class ObjectContext;

  void push(EditRecord record);
  /// Steps that will be no more, and with them what they deleted.
  void drop(std::deque<EditRecord> steps);
  /// Takes out of the steps whatever concerns objects that will be no more.
  void forget(const std::vector<OwnedObject>& gone);
  std::vector<Skipped> apply(std::deque<EditRecord>& from, std::deque<EditRecord>& to);

  ObjectContext& context_;
  std::deque<EditRecord> done_;
  std::deque<EditRecord> undone_;
  Observers<News> observers_;
};

}  // namespace pendra
