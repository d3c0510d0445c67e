#include "store/RelationshipKeeper.h"

#include <cstring>

#include "store/ObjectContext.h"

namespace pendra {

const PropertyDescriptor& RelationshipKeeper::inverseOf(const PropertyDescriptor& property) {
  const auto& candidates = property.target().properties;
  const auto inverse = std::find_if(candidates.begin(), candidates.end(), [&](const auto& candidate) {
    return std::strcmp(candidate.name, property.inverse) == 0;
  });
  Q_ASSERT_X(inverse != candidates.end(), property.name, "a relationship without its inverse");
  return *inverse;
}

void RelationshipKeeper::relate(ManagedObject& owner, const PropertyDescriptor& property,
                                ManagedObject* target) {
  owner.context_->willChange(owner, property);
  const PropertyDescriptor& inverse = inverseOf(property);
  ToOneBase& end = property.access.toOne(owner);
  if (ManagedObject* old = std::exchange(end.target_, nullptr)) {
    OrderedObjects& held = inverse.access.toMany(*old).targets_;
    if (held.remove(owner)) owner.context_->noteUnsettled(held);
  }
  if (target) link(owner, property, inverse, *target);
  owner.context_->noteChange(owner);
}

void RelationshipKeeper::link(ManagedObject& owner, const PropertyDescriptor& property,
                              const PropertyDescriptor& inverse, ManagedObject& target) {
  property.access.toOne(owner).target_ = &target;
  inverse.access.toMany(target).targets_.add(owner);
}

void RelationshipKeeper::squeeze(ManagedObject& object) {
  for (const PropertyDescriptor& property : object.entity().properties) {
    if (property.kind == Kind::ToMany) property.access.toMany(object).targets_.squeeze();
  }
}

void RelationshipKeeper::detach(ManagedObject& object) {
  for (const PropertyDescriptor& property : object.entity().properties) {
    if (property.kind == Kind::ToOne && property.access.toOne(object).target_) {
      relate(object, property, nullptr);
    } else if (property.kind == Kind::ToMany) {
      const PropertyDescriptor& inverse = inverseOf(property);
      for (ManagedObject* target : property.access.toMany(object).targets_.takeAll()) {
        target->context_->willChange(*target, inverse);
        inverse.access.toOne(*target).target_ = nullptr;
        target->context_->noteChange(*target);
      }
    }
  }
}

}  // namespace pendra
