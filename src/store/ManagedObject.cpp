#include "store/ManagedObject.h"

#include "store/ObjectContext.h"
#include "store/RelationshipKeeper.h"

namespace pendra {

namespace {

template <class Matches>
const PropertyDescriptor& propertyWhere(const ManagedObject& object, const Matches& matches) {
  const auto& properties = object.entity().properties;
  const auto found = std::find_if(properties.begin(), properties.end(), matches);
  Q_ASSERT_X(found != properties.end(), object.entity().name, "a member without a descriptor");
  return *found;
}

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

}  // namespace

const PropertyDescriptor* EntityDescriptor::property(QAnyStringView key) const {
  const auto found = std::find_if(properties.begin(), properties.end(), [key](const auto& property) {
    return key == QLatin1StringView(property.name);
  });
  return found == properties.end() ? nullptr : &*found;
}

ManagedObject::~ManagedObject() {
  if (cell_) *cell_ = nullptr;
}

const std::shared_ptr<ManagedObject*>& ManagedObject::cell() {
  if (!cell_) cell_ = std::make_shared<ManagedObject*>(this);
  return cell_;
}

void ManagedObject::willChange(const void* member) {
  context_->willChange(*this, propertyWhere(*this, [&](const PropertyDescriptor& candidate) {
    return addressOf(*this, candidate) == member;
  }));
}

void ManagedObject::noteChange() {
  if (context_) context_->noteChange(*this);
}

void ManagedObject::assignText(std::optional<QString>& member, std::optional<QString> value) {
  if (context_) {
    const auto& property = propertyWhere(*this, [&](const PropertyDescriptor& candidate) {
      return candidate.kind == Kind::Text && &candidate.access.text(*this) == &member;
    });
    context_->textChanged(*this, property, member, value);
  }
  member = std::move(value);
}

void ManagedObject::relate(ToOneBase& member, ManagedObject* target) {
  if (target && target->context_ != context_) target = nullptr;
  if (!context_ || member.target() == target) return;
  const auto& property = propertyWhere(*this, [&](const PropertyDescriptor& candidate) {
    return candidate.kind == Kind::ToOne && &candidate.access.toOne(*this) == &member;
  });
  RelationshipKeeper::relate(*this, property, target);
}

}  // namespace pendra
