#pragma once

#include <memory>
#include <vector>

#include "store/Descriptors.h"
#include "store/OrderedObjects.h"
#include "store/TextIndex.h"

namespace pendra {

/// The objects of one entity, which it owns, in the order of their insertion, with the indexes of their
/// properties.
class ObjectTable {
 public:
  explicit ObjectTable(const EntityDescriptor& entity);
  ~ObjectTable();
  ObjectTable(const ObjectTable&) = delete;
  ObjectTable& operator=(const ObjectTable&) = delete;

  [[nodiscard]] const EntityDescriptor& entity() const { return entity_; }
  /// The greatest identifier that an object ever had here; it never falls.
  [[nodiscard]] qint64 lastID() const { return lastID_; }
  [[nodiscard]] std::span<ManagedObject* const> objects() const { return objects_.view(); }
  /// None when it is not there.
  [[nodiscard]] ManagedObject* withID(qint64 id) const { return pendra::withID(objects(), id); }
  /// The objects that hold `text` in the indexed property of that name.
  [[nodiscard]] std::span<ManagedObject* const> matching(const char* key, const QString& text) const;

  /// The objects for which the indexed boolean of that name is true.
  [[nodiscard]] std::span<ManagedObject* const> flagged(const char* key) const;

  /// The object has its identifier.
  void add(OwnedObject object);
  /// The object must live until `settle`.
  [[nodiscard]] OwnedObject take(ManagedObject& object);
  /// An indexed property of an object that is here will change: it stands in no index between the two.
  void removeFromIndex(ManagedObject& object, const PropertyDescriptor& property);
  void addToIndex(ManagedObject& object, const PropertyDescriptor& property);

  void makeRoom(std::size_t count);
  /// What has been taken is found nowhere in here any more.
  void settle();

 private:
  /// Of a text or of a boolean.
  struct Index {
    const PropertyDescriptor* property;
    TextIndex texts;
    OrderedObjects flagged;
    void add(ManagedObject& object);
    void remove(ManagedObject& object);
  };
  Index& indexOf(const PropertyDescriptor& property);
  [[nodiscard]] const Index& indexNamed(const char* key) const;

  const EntityDescriptor& entity_;
  OrderedObjects objects_;
  qint64 lastID_ = 0;
  std::vector<Index> indexes_;
};

}  // namespace pendra
