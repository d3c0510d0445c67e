#include "store/RelationshipKeeper.h"

#include "store/ManagedObject.h"

namespace pendra {

namespace {

const PropertyDescriptor& inverseOf(const PropertyDescriptor& property) {
  const PropertyDescriptor* inverse = property.target().property(QLatin1StringView(property.inverse));
  Q_ASSERT_X(inverse, property.name, "a relationship without its inverse");
  return *inverse;
}

auto placeOf(std::vector<ManagedObject*>& targets, const ManagedObject& object) {
  return std::lower_bound(
      targets.begin(), targets.end(), &object,
      [](const ManagedObject* a, const ManagedObject* b) { return a->objectID() < b->objectID(); });
}

}  // namespace

void RelationshipKeeper::relate(ManagedObject& owner, const PropertyDescriptor& property,
                                ManagedObject* target) {
  ToOneBase& end = property.access.toOne(owner);
  if (ManagedObject* old = std::exchange(end.target_, nullptr)) {
    auto& targets = inverseOf(property).access.toMany(*old).targets_;
    const auto place = placeOf(targets, owner);
    Q_ASSERT(place != targets.end() && *place == &owner);
    targets.erase(place);
  }
  if (target) link(owner, property, *target);
  owner.noteChange();
}

void RelationshipKeeper::link(ManagedObject& owner, const PropertyDescriptor& property,
                              ManagedObject& target) {
  property.access.toOne(owner).target_ = &target;
  auto& targets = inverseOf(property).access.toMany(target).targets_;
  targets.insert(placeOf(targets, owner), &owner);
}

void RelationshipKeeper::detach(ManagedObject& object) {
  for (const PropertyDescriptor& property : object.entity().properties) {
    if (property.kind == Kind::ToOne && property.access.toOne(object).target_) {
      relate(object, property, nullptr);
    } else if (property.kind == Kind::ToMany) {
      const PropertyDescriptor& inverse = inverseOf(property);
      for (ManagedObject* target : std::exchange(property.access.toMany(object).targets_, {})) {
        inverse.access.toOne(*target).target_ = nullptr;
        target->noteChange();
      }
    }
  }
}

}  // namespace pendra
