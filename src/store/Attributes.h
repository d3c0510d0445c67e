#pragma once

#include "store/PropertyValue.h"

namespace pendra {

/// Writes an attribute as it is, without a note of it; a value of another kind is absence. Relationships are
/// the RelationshipKeeper's.
void setAttribute(ManagedObject& object, const PropertyDescriptor& property, const PropertyValue& value);

}  // namespace pendra
