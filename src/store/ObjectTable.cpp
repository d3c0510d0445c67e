#include "ObjectTable.h"

#include <cstring>

#include "store/ManagedObject.h"

namespace pendra {

ObjectTable::ObjectTable(const EntityDescriptor& entity) : entity_(entity) {
  for (const PropertyDescriptor& property : entity.properties) {
    if (property.indexed) indexes_.push_back({&property, {}, {}});
  }
}

ObjectTable::~ObjectTable() {
  for (ManagedObject* object : objects()) const OwnedObject owned(object);
}

std::span<ManagedObject* const> ObjectTable::matching(const char* key, const QString& text) const {
  return indexNamed(key).texts.find(text);
}

std::span<ManagedObject* const> ObjectTable::flagged(const char* key) const {
  return indexNamed(key).flagged.view();
}

void ObjectTable::add(OwnedObject object) {
  ManagedObject& added = *object.release();
  lastID_ = std::max(lastID_, added.objectID());
  objects_.add(added);
  for (Index& index : indexes_) index.add(added);
}

OwnedObject ObjectTable::take(ManagedObject& object) {
  for (Index& index : indexes_) index.remove(object);
  objects_.remove(object);
  return OwnedObject(&object);
}

void ObjectTable::addToIndex(ManagedObject& object, const PropertyDescriptor& property) {
  indexOf(property).add(object);
}

void ObjectTable::removeFromIndex(ManagedObject& object, const PropertyDescriptor& property) {
  indexOf(property).remove(object);
}

void ObjectTable::makeRoom(std::size_t count) {
  if (count <= objects().size()) return;
  objects_.reserve(count);
  for (Index& index : indexes_) {
    if (index.property->kind == Kind::Text) index.texts.reserve(count);
  }
}

void ObjectTable::settle() {
  objects_.settle();
  for (Index& index : indexes_) {
    index.texts.settle();
    index.flagged.settle();
  }
}

void ObjectTable::Index::add(ManagedObject& object) {
  if (property->kind == Kind::Text) {
    if (const auto& text = property->access.text(object).get()) texts.add(*text, object);
  } else if (property->access.boolean(object).get() == true) {
    flagged.add(object);
  }
}

void ObjectTable::Index::remove(ManagedObject& object) {
  if (property->kind == Kind::Text) {
    if (const auto& text = property->access.text(object).get()) texts.remove(*text, object);
  } else if (property->access.boolean(object).get() == true) {
    flagged.remove(object);
  }
}

ObjectTable::Index& ObjectTable::indexOf(const PropertyDescriptor& property) {
  return *std::find_if(indexes_.begin(), indexes_.end(),
                       [&](const Index& one) { return one.property == &property; });
}

const ObjectTable::Index& ObjectTable::indexNamed(const char* key) const {
  const auto index = std::find_if(indexes_.begin(), indexes_.end(), [key](const Index& one) {
    return std::strcmp(one.property->name, key) == 0;
  });
  Q_ASSERT_X(index != indexes_.end(), key, "no index of this property");
  return *index;
}

}  // namespace pendra
