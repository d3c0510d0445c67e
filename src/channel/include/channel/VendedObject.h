#pragma once

#include "channel/ArchiveValue.h"
#include "channel/Protocol.h"

namespace pendra {

/// The object that performs incoming calls on the serving side.
class VendedObject {
 public:
  virtual ~VendedObject() = default;
  /// Null when it lacks the selector.
  [[nodiscard]] virtual const ProtocolMethod* methodSignatureForSelector(QStringView selector) const = 0;
  /// Performs a call with as many arguments as its method has; a nil argument and a nil result are nil
  /// values.
  virtual ArchiveValue perform(const ProtocolMethod& method, const QList<ArchiveValue>& arguments) = 0;
};

}  // namespace pendra
