#include "ObjectTable.h"

#include <cstring>

#include "store/ManagedObject.h"

namespace pendra {

ObjectTable::ObjectTable(const EntityDescriptor& entity) : entity_(entity) {
  for (const PropertyDescriptor& property : entity.properties) {
    if (property.indexed) indexes_.push_back({&property, {}});
  }
}

ObjectTable::~ObjectTable() {
  for (ManagedObject* object : objects()) const std::unique_ptr<ManagedObject> owned(object);
}

std::span<ManagedObject* const> ObjectTable::matching(const char* key, const QString& text) const {
  const auto index = std::find_if(indexes_.begin(), indexes_.end(), [key](const Index& one) {
    return std::strcmp(one.property->name, key) == 0;
  });
  Q_ASSERT_X(index != indexes_.end(), key, "no index of this property");
  return index->texts.find(text);
}

void ObjectTable::add(std::unique_ptr<ManagedObject> object) {
  ManagedObject& added = *object.release();
  lastID_ = std::max(lastID_, added.objectID());
  objects_.add(added);
  for (Index& index : indexes_) {
    if (const auto& text = index.property->access.text(added)) index.texts.add(*text, added);
  }
}

std::unique_ptr<ManagedObject> ObjectTable::take(ManagedObject& object) {
  for (Index& index : indexes_) {
    if (const auto& text = index.property->access.text(object)) index.texts.remove(*text, object);
  }
  objects_.remove(object);
  return std::unique_ptr<ManagedObject>(&object);
}

void ObjectTable::textChanges(ManagedObject& object, const PropertyDescriptor& property,
                              const std::optional<QString>& from, const std::optional<QString>& to) {
  if (!property.indexed) return;
  const auto index = std::find_if(indexes_.begin(), indexes_.end(),
                                  [&](const Index& one) { return one.property == &property; });
  if (from) index->texts.remove(*from, object);
  if (to) index->texts.add(*to, object);
}

void ObjectTable::makeRoom(std::size_t count) {
  if (count <= objects().size()) return;
  objects_.reserve(count);
  for (Index& index : indexes_) index.texts.reserve(count);
}

void ObjectTable::settle() {
  objects_.settle();
  for (Index& index : indexes_) index.texts.settle();
}

}  // namespace pendra
