#include "store/ChangeSet.h"

#include "Editing.h"
#include "store/ObjectContext.h"

namespace pendra {

namespace {

const PropertyDescriptor& propertyOf(const ManagedObject& object, QAnyStringView name) {
  const PropertyDescriptor* property = object.entity().property(name);
  promise(property && property->hasColumn(), "a change is asked for by the name of a column");
  return *property;
}

void sort(std::vector<ManagedObject*>& objects) {
  std::sort(objects.begin(), objects.end(),
            [](const ManagedObject* a, const ManagedObject* b) { return a->objectID() < b->objectID(); });
}

}  // namespace

ChangeSet::ChangeSet(const ObjectContext& context, const EditRecord& record)
    : context_(context), record_(record) {
  for (ManagedObject* object : record.inserted) groupFor(object->entity()).inserted.push_back(object);
  for (const auto& object : record.deleted) groupFor(object->entity()).deleted.push_back(object.get());
  const ManagedObject* last = nullptr;
  for (const PropertyChange& change : record.changes) {
    if (std::exchange(last, change.object) == change.object || change.object->isDeleted()) continue;
    groupFor(change.object->entity()).changed.push_back(change.object);
  }
  for (Group& group : groups_) {
    sort(group.inserted);
    sort(group.changed);
    sort(group.deleted);
  }
}

ChangeSet::Group& ChangeSet::groupFor(const EntityDescriptor& entity) {
  const auto found = std::find_if(groups_.begin(), groups_.end(),
                                  [&](const Group& group) { return group.entity == &entity; });
  if (found != groups_.end()) return *found;
  groups_.push_back({&entity, {}, {}, {}});
  return groups_.back();
}

const ChangeSet::Group& ChangeSet::groupOf(const EntityDescriptor& entity) const {
  static const Group kNone;
  const auto found = std::find_if(groups_.begin(), groups_.end(),
                                  [&](const Group& group) { return group.entity == &entity; });
  return found == groups_.end() ? kNone : *found;
}

bool ChangeSet::changed(const ManagedObject& object, QAnyStringView property) const {
  return record_.changeOf(object, propertyOf(object, property)) != nullptr;
}

PropertyValue ChangeSet::before(const ManagedObject& object, QAnyStringView property) const {
  const PropertyDescriptor& wanted = propertyOf(object, property);
  const PropertyChange* change = record_.changeOf(object, wanted);
  return change ? change->before : valueOf(object, wanted);
}

ManagedObject* ChangeSet::find(const EntityDescriptor& entity, const PropertyValue& id) const {
  const qint64* wanted = std::get_if<qint64>(&id);
  if (!wanted) return nullptr;
  if (ManagedObject* object = context_.objectWithID(entity, *wanted)) return object;
  return withID(groupOf(entity).deleted, *wanted);
}

}  // namespace pendra
