#pragma once
// What an edit did, told once when it has ended: the objects are in their new state, and what they held
// before stands here. An object is in one of the three lists at most.

#include <QAnyStringView>
#include <vector>

#include "store/EditRecord.h"

namespace pendra {

class ObjectContext;

/// The news of one edit. Valid only while it is being told.
class ChangeSet {
 public:
  ChangeSet(const ObjectContext& context, const EditRecord& record);

  /// Objects that are new, or back again. In the order of insertion into the document, as all lists here.
  template <class T>
  [[nodiscard]] Objects<T> inserted() const {
    return Objects<T>(groupOf(T::descriptor()).inserted);
  }
  /// Objects that stayed and hold something else now in an attribute or a to-one relationship. An object
  /// that a to-many relationship holds has changed, its owner has not.
  template <class T>
  [[nodiscard]] Objects<T> changed() const {
    return Objects<T>(groupOf(T::descriptor()).changed);
  }
  /// Objects that have gone. Still readable, but out of every relationship: ask `targetBefore` for those.
  template <class T>
  [[nodiscard]] Objects<T> deleted() const {
    return Objects<T>(groupOf(T::descriptor()).deleted);
  }
  /// Whether an object of the class is in any of the lists.
  template <class T>
  [[nodiscard]] bool touches() const {
    const Group& group = groupOf(T::descriptor());
    return !(group.inserted.empty() && group.changed.empty() && group.deleted.empty());
  }

  /// Whether the edit left that property (an attribute or a to-one relationship, by its column's name) with
  /// another value; false for an inserted object.
  [[nodiscard]] bool changed(const ManagedObject& object, QAnyStringView property) const;
  /// Whether that property of any object that stayed has another value.
  template <class T>
  [[nodiscard]] bool changedAny(QAnyStringView property) const {
    for (const T* object : changed<T>()) {
      if (changed(*object, property)) return true;
    }
    return false;
  }
  /// What the property held before the edit; what it holds now where the edit left it alone.
  [[nodiscard]] PropertyValue before(const ManagedObject& object, QAnyStringView property) const;
  /// The target that a to-one relationship had before the edit, which may be one that has gone with it.
  template <class T>
  [[nodiscard]] T* targetBefore(const ManagedObject& object, QAnyStringView property) const {
    return static_cast<T*>(find(T::descriptor(), before(object, property)));
  }

 private:
  struct Group {
    const EntityDescriptor* entity = nullptr;
    std::vector<ManagedObject*> inserted;
    std::vector<ManagedObject*> changed;
    std::vector<ManagedObject*> deleted;
  };
  Group& groupFor(const EntityDescriptor& entity);
  [[nodiscard]] const Group& groupOf(const EntityDescriptor& entity) const;
  [[nodiscard]] ManagedObject* find(const EntityDescriptor& entity, const PropertyValue& id) const;

  const ObjectContext& context_;
  const EditRecord& record_;
  std::vector<Group> groups_;
};

}  // namespace pendra
