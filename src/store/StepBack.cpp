#include "StepBack.h"

#include <unordered_set>

#include "store/ObjectContext.h"

namespace pendra {

void StepBack::run() {
  if (step_.isIndivisible && !isFree()) return;
  const auto whole = wholeObjects();
  bringBack();
  for (const PropertyChange& change : step_.changes) changeBack(change);
  keepWhole(whole);
  removeOrphans();
  removeInserted();
}

/// Whether all of the step can be taken back; what stands in the way is skipped.
bool StepBack::isFree() {
  const auto comesBack = [this](const ManagedObject* object) {
    return std::any_of(step_.deleted.begin(), step_.deleted.end(),
                       [object](const OwnedObject& deleted) { return deleted.get() == object; });
  };
  for (const PropertyChange& change : step_.changes) {
    if (!comesBack(change.object) && !mayChange(change)) skip(*change.object, change.property);
  }
  for (ManagedObject* object : step_.inserted) {
    if (object->isDeleted() || isFixed(*object, nullptr)) skip(*object);
  }
  for (const auto& object : step_.deleted) {
    if (isReplaced(*object)) skip(*object);
  }
  return skipped_.empty();
}

void StepBack::bringBack() {
  std::vector<OwnedObject> replaced;
  for (auto& object : std::exchange(step_.deleted, {})) {
    if (isReplaced(*object)) {
      skip(*object);
      replaced.push_back(std::move(object));
      continue;
    }
    back_.push_back(object.get());
    context_.putBack(std::move(object));
  }
  step_.deleted = std::move(replaced);
  std::sort(back_.begin(), back_.end());
}

void StepBack::changeBack(const PropertyChange& change) {
  if (!mayChange(change)) return skip(*change.object, change.property);
  context_.restore(*change.object, *change.property, change.before);
  if (valueOf(*change.object, *change.property) != change.before) skip(*change.object, change.property);
  changedBack_.push_back(&change);
}

std::vector<const ManagedObject*> StepBack::wholeObjects() const {
  std::vector<const ManagedObject*> whole;
  if (!context_.isWhole_) return whole;
  for (const PropertyChange& change : step_.changes) {
    if (!change.object->isDeleted() && context_.isWhole_(*change.object)) whole.push_back(change.object);
  }
  return whole;
}

/// Part of a change was left alone, or something else has moved on since, with which the rest does not go.
void StepBack::keepWhole(const std::vector<const ManagedObject*>& whole) {
  std::unordered_set<const ManagedObject*> broken;
  for (const ManagedObject* object : whole) {
    if (!context_.isWhole_(*object)) broken.insert(object);
  }
  for (const PropertyChange* change : changedBack_) {
    if (!broken.contains(change->object)) continue;
    context_.restore(*change->object, *change->property, change->after);
    skip(*change->object, change->property);
  }
}

bool StepBack::mayChange(const PropertyChange& change) const {
  // What has just come back gets back whatever it was.
  if (std::binary_search(back_.begin(), back_.end(), change.object)) return true;
  return !change.object->isDeleted() && !isFixed(*change.object, change.property) && isThere(change) &&
         valueOf(*change.object, *change.property) == change.after;
}

/// Whether what a relationship had before is still in the document: no other target gives way to none.
bool StepBack::isThere(const PropertyChange& change) const {
  const qint64* target = std::get_if<qint64>(&change.before);
  return change.property->kind != Kind::ToOne || !target ||
         context_.objectWithID(change.property->target(), *target);
}

/// What came back to an owner that has gone since would have gone with it.
void StepBack::removeOrphans() {
  for (const PropertyChange& change : step_.changes) {
    ManagedObject& object = *change.object;
    if (change.property->kind != Kind::ToOne || change.before == PropertyValue() || object.isDeleted())
      continue;
    if (!std::binary_search(back_.begin(), back_.end(), &object)) continue;
    const PropertyDescriptor* owns = change.property->target().property(change.property->inverse);
    const bool hasOwner = change.property->access.toOne(object).target() != nullptr;
    if (owns->deleteRule == DeleteRule::Cascade && !hasOwner) context_.deleteObject(object);
  }
}

void StepBack::removeInserted() {
  std::vector<ManagedObject*> leaving;
  for (ManagedObject* object : step_.inserted) {
    if (object->isDeleted()) continue;
    isFixed(*object, nullptr) ? skip(*object) : leaving.push_back(object);
  }
  std::sort(leaving.begin(), leaving.end());
  for (std::size_t before = 0; before != leaving.size();) {
    before = leaving.size();
    std::vector<ManagedObject*> free;
    for (ManagedObject* object : leaving) isHeldBy(*object, leaving) ? skip(*object) : free.push_back(object);
    leaving = std::move(free);
  }
  for (ManagedObject* object : leaving) context_.deleteObject(*object);
}

bool StepBack::isHeldBy(const ManagedObject& object, const std::vector<ManagedObject*>& leaving) const {
  auto& owner = const_cast<ManagedObject&>(object);
  const auto leaves = [&](ManagedObject* target) {
    return target->isTemporary() || std::binary_search(leaving.begin(), leaving.end(), target);
  };
  return std::any_of(object.entity().properties.begin(), object.entity().properties.end(),
                     [&](const PropertyDescriptor& property) {
                       if (property.kind != Kind::ToMany) return false;
                       const auto targets = property.access.toMany(owner).targets();
                       return !std::all_of(targets.begin(), targets.end(), leaves);
                     });
}

/// A backup brought it into the document a second time, and that one stayed: both would be one row of the
/// file.
bool StepBack::isReplaced(const ManagedObject& object) const {
  return context_.objectWithID(object.entity(), object.objectID()) != nullptr;
}

bool StepBack::isFixed(const ManagedObject& object, const PropertyDescriptor* property) const {
  return context_.isFixed_ && context_.isFixed_(object, property);
}

void StepBack::skip(ManagedObject& object, const PropertyDescriptor* property) {
  skipped_.push_back({&object.entity(), object.objectID(), property, Ref<ManagedObject>(&object)});
}

}  // namespace pendra
