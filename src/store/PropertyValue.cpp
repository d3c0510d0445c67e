#include "store/PropertyValue.h"

#include "Attributes.h"
#include "store/ManagedObject.h"

namespace pendra {

namespace {

template <class Held>
PropertyValue valueIn(const Slot<Held>& slot) {
  const auto& held = slot.get();
  return held ? PropertyValue(*held) : PropertyValue();
}

template <class Held>
void setIn(Slot<Held>& slot, const PropertyValue& value) {
  const Held* held = std::get_if<Held>(&value);
  slot.set(held ? std::optional(*held) : std::nullopt);
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
      setIn(property.access.text(object), value);
      break;
    case Kind::Boolean:
      setIn(property.access.boolean(object), value);
      break;
    case Kind::Instant:
      setIn(property.access.instant(object), value);
      break;
    case Kind::Number:
      setIn(property.access.number(object), value);
      break;
    case Kind::ToOne:
    case Kind::ToMany:
      break;
  }
}

}  // namespace pendra
