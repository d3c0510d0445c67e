#pragma once

#include "store/UndoStack.h"

namespace pendra {

/// Takes one step back: what it deleted comes back, what it changed is as before, what it inserted goes. Runs
/// inside an edit, whose record does it again.
class StepBack {
 public:
  /// The step gives its objects away, but for those that stay out.
  StepBack(ObjectContext& context, EditRecord& step) : context_(context), step_(step) {}

  void run();
  [[nodiscard]] std::vector<Skipped> skipped() { return std::move(skipped_); }

 private:
  [[nodiscard]] bool isFree();
  void bringBack();
  void changeBack(const PropertyChange& change);
  /// The objects that the step changed and that hold together.
  [[nodiscard]] std::vector<const ManagedObject*> wholeObjects() const;
  void keepWhole(const std::vector<const ManagedObject*>& whole);
  [[nodiscard]] bool mayChange(const PropertyChange& change) const;
  [[nodiscard]] bool isThere(const PropertyChange& change) const;
  void removeOrphans();
  void removeInserted();
  [[nodiscard]] bool isHeldBy(const ManagedObject& object, const std::vector<ManagedObject*>& leaving) const;
  [[nodiscard]] bool isReplaced(const ManagedObject& object) const;
  [[nodiscard]] bool isFixed(const ManagedObject& object, const PropertyDescriptor* property) const;
  void skip(ManagedObject& object, const PropertyDescriptor* property = nullptr);

  ObjectContext& context_;
  EditRecord& step_;
  std::vector<ManagedObject*> back_;
  std::vector<const PropertyChange*> changedBack_;
  std::vector<Skipped> skipped_;
};

}  // namespace pendra
