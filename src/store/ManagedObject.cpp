#include "store/ManagedObject.h"

#include "store/ObjectContext.h"
#include "store/RelationshipKeeper.h"

namespace pendra {

namespace {

const void* addressOf(ManagedObject& object, const PropertyDescriptor& property) {
  switch (property.kind) {
    case Kind::Text:
      return &property.access.text(object);
    case Kind::Boolean:
      return &property.access.boolean(object);
    case Kind::Instant:
      return &property.access.instant(object);
    case Kind::Number:
      return &property.access.number(object);
    case Kind::ToOne:
      return &property.access.toOne(object);
    case Kind::ToMany:
      return &property.access.toMany(object);
  }
  Q_UNREACHABLE();
}

const PropertyDescriptor& propertyAt(ManagedObject& object, const void* member) {
  const auto& properties = object.entity().properties;
  const auto found = std::find_if(properties.begin(), properties.end(), [&](const auto& candidate) {
    return addressOf(object, candidate) == member;
  });
  Q_ASSERT_X(found != properties.end(), object.entity().name, "a member without a descriptor");
  return *found;
}

}  // namespace

const PropertyDescriptor* EntityDescriptor::property(QAnyStringView key) const {
  const auto found = std::find_if(properties.begin(), properties.end(), [key](const auto& property) {
    return key == QLatin1StringView(property.name);
  });
  return found == properties.end() ? nullptr : &*found;
}

void LetGo::operator()(ManagedObject* object) const { object->letGo(); }

void ManagedObject::letGo() {
  context_ = nullptr;
  withoutOwner_ = true;
  if (refs_ == 0) delete this;
}

void ManagedObject::releaseRef() {
  if (--refs_ == 0 && withoutOwner_) delete this;
}

const PropertyDescriptor& ManagedObject::willChange(const void* slot) {
  const PropertyDescriptor& property = propertyAt(*this, slot);
  context_->willChange(*this, property);
  return property;
}

void ManagedObject::hasChanged(const PropertyDescriptor& property) { context_->hasChanged(*this, property); }

void ManagedObject::relate(ToOneBase& member, ManagedObject* target) {
  if (target && target->context_ != context_) target = nullptr;
  if (!context_ || member.target() == target) return;
  RelationshipKeeper::relate(*this, propertyAt(*this, &member), target);
}

}  // namespace pendra
