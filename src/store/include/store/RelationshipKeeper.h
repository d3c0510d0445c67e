#pragma once

#include "store/Descriptors.h"

namespace pendra {

/// The only hand that writes relationships: what it does at one end it does at the other. A relationship
/// has a to-one end, which has the column, and a to-many end.
class RelationshipKeeper {
 public:
  /// Makes `target` (or none) the target of `owner`'s to-one property, and notes the change.
  static void relate(ManagedObject& owner, const PropertyDescriptor& property, ManagedObject* target);
  /// The property at the other end.
  [[nodiscard]] static const PropertyDescriptor& inverseOf(const PropertyDescriptor& property);
  /// Ties both ends of a property that holds nothing yet, without noting a change.
  static void link(ManagedObject& owner, const PropertyDescriptor& property,
                   const PropertyDescriptor& inverse, ManagedObject& target);
  /// Takes `object` out of every relationship that holds it or that it holds.
  static void detach(ManagedObject& object);
  /// Gives back the room that its to-many ends do not need.
  static void squeeze(ManagedObject& object);
};

}  // namespace pendra
