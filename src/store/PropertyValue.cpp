#include "store/PropertyValue.h"

#include "Attributes.h"
#include "store/ManagedObject.h"

namespace pendra {

namespace {

template <class Held>
PropertyValue valueIn(const std::optional<Held>& member) {
  return member ? PropertyValue(*member) : PropertyValue();
}

template <class Held>
std::optional<Held> heldIn(const PropertyValue& value) {
  const Held* held = std::get_if<Held>(&value);
  return held ? std::optional(*held) : std::nullopt;
}

}  // namespace

PropertyValue valueOf(const ManagedObject& object, const PropertyDescriptor& property) {
  auto& owner = const_cast<ManagedObject&>(object);  // the accessors serve readers and writers
  switch (property.kind) {
    case Kind::Text:
      return valueIn(property.access.text(owner));
    case Kind::Boolean:
      return valueIn(property.access.boolean(owner));
    case Kind::Instant:
      return valueIn(property.access.instant(owner));
    case Kind::Number:
      return valueIn(property.access.number(owner));
    case Kind::ToOne: {
      const ManagedObject* target = property.access.toOne(owner).target();
      return target ? PropertyValue(target->objectID()) : PropertyValue();
    }
    case Kind::ToMany:
      break;
  }
  Q_UNREACHABLE();
}

void setAttribute(ManagedObject& object, const PropertyDescriptor& property, const PropertyValue& value) {
  switch (property.kind) {
    case Kind::Text:
      property.access.text(object) = heldIn<QString>(value);
      break;
    case Kind::Boolean:
      property.access.boolean(object) = heldIn<bool>(value);
      break;
    case Kind::Instant:
      property.access.instant(object) = heldIn<Instant>(value);
      break;
    case Kind::Number:
      property.access.number(object) = heldIn<double>(value);
      break;
    case Kind::ToOne:
    case Kind::ToMany:
      break;
  }
}

}  // namespace pendra
