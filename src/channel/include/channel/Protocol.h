#pragma once

#include <QStringView>
#include <algorithm>
#include <span>

namespace pendra {

/// One operation of a remote interface. Its arguments and results are objects.
struct ProtocolMethod {
  enum class Returns { Object, Void };

  QStringView selector;  ///< as it goes over the wire, colons included
  int argumentCount = 0;
  Returns returns = Returns::Object;
  bool oneWay = false;  ///< no reply is sent and none awaited
};

/// A remote interface: the selectors that can be called.
struct Protocol {
  std::span<const ProtocolMethod> methods;

  /// Null when the selector is not in the protocol.
  [[nodiscard]] const ProtocolMethod* methodSignatureForSelector(QStringView selector) const {
    const auto found = std::find_if(methods.begin(), methods.end(), [&](const ProtocolMethod& method) {
      return method.selector == selector;
    });
    return found == methods.end() ? nullptr : &*found;
  }
};

}  // namespace pendra
