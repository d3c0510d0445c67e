#pragma once

#include <memory>
#include <vector>

#include "store/ManagedObject.h"
#include "store/PropertyValue.h"

namespace pendra {

/// One property that an edit left with another value than it found.
struct PropertyChange {
  ManagedObject* object;
  const PropertyDescriptor* property;
  PropertyValue before;
  PropertyValue after;
};

/// What one edit did on balance. It owns the objects that the edit deleted. Temporary objects, and objects
/// that came and went within the edit, are not in it.
struct EditRecord {
  QString name;
  std::vector<PropertyChange> changes;  ///< sorted by object, then property; of inserted objects none
  std::vector<ManagedObject*> inserted;
  std::vector<OwnedObject> deleted;
  bool isIndivisible = false;  ///< it is taken back as a whole or not at all

  [[nodiscard]] bool isEmpty() const { return changes.empty() && inserted.empty() && deleted.empty(); }
  /// None when the edit left the property as it found it.
  [[nodiscard]] const PropertyChange* changeOf(const ManagedObject& object,
                                               const PropertyDescriptor& property) const;
};

}  // namespace pendra
