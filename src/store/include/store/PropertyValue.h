#pragma once

#include <QString>
#include <variant>

#include "platform/Clock.h"
#include "store/Descriptors.h"

namespace pendra {

/// What one property holds, whatever its kind; the first alternative is absence. A to-one relationship
/// holds the identifier of its target, which says who was meant even when the target has gone.
using PropertyValue = std::variant<std::monostate, QString, bool, Instant, double, qint64>;

/// What an attribute or a to-one relationship holds.
[[nodiscard]] PropertyValue valueOf(const ManagedObject& object, const PropertyDescriptor& property);

}  // namespace pendra
