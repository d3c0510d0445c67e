#include "store/StateTransfer.h"

#include <algorithm>

#include "ObjectTable.h"
#include "store/ObjectContext.h"
#include "store/PropertyValue.h"
#include "store/RelationshipKeeper.h"

namespace pendra {

namespace {

ManagedObject* targetOf(const ManagedObject& object, const PropertyDescriptor& property) {
  return property.access.toOne(const_cast<ManagedObject&>(object)).target();
}

/// Those that a file holds.
std::vector<ManagedObject*> lasting(std::span<ManagedObject* const> objects) {
  std::vector<ManagedObject*> found;
  found.reserve(objects.size());
  std::copy_if(objects.begin(), objects.end(), std::back_inserter(found),
               [](const ManagedObject* object) { return !object->isTemporary(); });
  return found;
}

bool isSameObject(const ManagedObject& one, const ManagedObject& other,
                  const std::function<bool(const PropertyDescriptor&)>& isIgnored) {
  const auto& properties = one.entity().properties;
  return one.objectID() == other.objectID() &&
         std::all_of(properties.begin(), properties.end(), [&](const PropertyDescriptor& property) {
           return !property.hasColumn() || isIgnored(property) ||
                  valueOf(one, property) == valueOf(other, property);
         });
}

}  // namespace

bool StateTransfer::isSameState(const ObjectContext& one, const ObjectContext& other,
                                const std::function<bool(const PropertyDescriptor&)>& isIgnored) {
  return std::all_of(one.tables_.begin(), one.tables_.end(), [&](const auto& table) {
    const auto these = lasting(table->objects());
    const auto those = lasting(other.objectsOf(table->entity()));
    return std::equal(these.begin(), these.end(), those.begin(), those.end(),
                      [&](const auto* a, const auto* b) { return isSameObject(*a, *b, isIgnored); });
  });
}

void StateTransfer::run() {
  keepWhatStays();
  for (const auto& table : from_.tables_) {
    for (const ManagedObject* theirs : lasting(table->objects())) pairUp(*theirs);
  }
  bringMissing();
  for (const Pair& pair : pairs_) takeValues(pair);
  removeOthers();
}

void StateTransfer::keepWhatStays() {
  for (const auto& table : to_.tables_) {
    for (ManagedObject* mine : table->objects()) {
      if (rules_.stays(*mine)) keep(*mine);
    }
  }
}

void StateTransfer::keep(ManagedObject& mine) {
  if (!kept_.insert(&mine).second) return;
  for (const PropertyDescriptor& property : mine.entity().properties) {
    if (property.kind != Kind::ToOne) continue;
    if (ManagedObject* target = targetOf(mine, property)) keep(*target);
  }
}

void StateTransfer::pairUp(const ManagedObject& theirs) {
  ManagedObject* mine = to_.objectWithID(theirs.entity(), theirs.objectID());
  const bool isFree = mine == nullptr;
  if (mine && (mine->isTemporary() || !rules_.isSame(*mine, theirs, kept_.contains(mine)))) mine = nullptr;
  pairs_.push_back({mine, &theirs, mine == nullptr, isFree});
}

void StateTransfer::bringMissing() {
  for (Pair& pair : pairs_) {
    const EntityDescriptor& entity = pair.theirs->entity();
    if (pair.isNew) {
      pair.mine = &to_.insertWithID(
          entity, pair.idIsFree ? pair.theirs->objectID()
                                : std::max(to_.table(entity).lastID(), from_.table(entity).lastID()) + 1);
    }
    mineOf_.emplace(pair.theirs, pair.mine);
  }
}

void StateTransfer::takeValues(const Pair& pair) {
  if (!pair.isNew && rules_.stays(*pair.mine)) return;
  for (const PropertyDescriptor& property : pair.mine->entity().properties) {
    if (!property.hasColumn() || (!pair.isNew && rules_.isOwn(property))) continue;
    if (property.kind == Kind::ToOne) {
      const ManagedObject* theirs = targetOf(*pair.theirs, property);
      ManagedObject* target = theirs ? mineOf_.at(theirs) : nullptr;
      if (targetOf(*pair.mine, property) != target) {
        RelationshipKeeper::relate(*pair.mine, property, target);
      }
    } else if (PropertyValue value = valueOf(*pair.theirs, property);
               valueOf(*pair.mine, property) != value) {
      to_.restore(*pair.mine, property, value);
    }
  }
}

void StateTransfer::removeOthers() {
  for (const Pair& pair : pairs_) kept_.insert(pair.mine);
  for (const auto& table : to_.tables_) {
    for (ManagedObject* mine : lasting(table->objects())) {
      if (!kept_.contains(mine)) to_.deleteObject(*mine);
    }
  }
}

}  // namespace pendra
