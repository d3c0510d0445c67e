#pragma once

#include <functional>

#include "store/ChangeSet.h"
#include "store/Edit.h"
#include "store/Observers.h"

namespace pendra {

class ObjectContext;

/// Ends the program where a promise between two pieces of it is broken; whatever was said to be stored is.
void promise(bool kept, const char* what);

/// The edit of a context that is running: every single change of it in order, so that any part at its end can
/// be rolled back, and what becomes of it when it has ended.
class Editing {
 public:
  using Work = std::function<Result<void>()>;
  /// How long a command waits for another program that reads the file, in milliseconds.
  static constexpr int kPatience = 20;

  explicit Editing(ObjectContext& context) : context_(context) {}

  [[nodiscard]] bool isRunning() const { return depth_ > 0; }
  Result<void> run(const QString& name, EditOptions options, const Work& work);
  /// Runs the work of an undo or redo and answers what it did on balance, announced and stored.
  EditRecord runBack(const QString& name, const std::function<void()>& work);

  [[nodiscard]] Subscription observe(std::function<void(const ChangeSet&)> told) {
    return observers_.add(std::move(told));
  }

  /// Whether what becomes of the object is kept here.
  [[nodiscard]] bool records(const ManagedObject& object) const;
  void willChange(ManagedObject& object, const PropertyDescriptor& property);
  void inserted(ManagedObject& object);
  void deleted(OwnedObject object);

 private:
  enum class Deed { Changed, Inserted, Deleted };
  struct Entry {
    Deed deed;
    ManagedObject* object;
    const PropertyDescriptor* property = nullptr;
    PropertyValue before = {};
  };
  class Running;

  void mustBeAllowed(const ManagedObject& object) const;
  Result<void> attempt(const Work& work);
  void rollBack(std::size_t mark);
  void takeBack(const Entry& entry, std::vector<OwnedObject>& gone);
  EditRecord balance(const QString& name);
  void settleChanges(EditRecord& record);
  void settleObjects(EditRecord& record);
  void announceAndStore(const EditRecord& record);

  ObjectContext& context_;
  int depth_ = 0;
  bool rollingBack_ = false;
  bool announcing_ = false;
  std::vector<Entry> entries_;
  std::vector<OwnedObject> gone_;  // one for each entry of a deletion, in their order
  Observers<const ChangeSet&> observers_;
};

}  // namespace pendra
