#pragma once

namespace pendra {

/// Stands in an archived array wherever an argument or a result is nil, because an array cannot hold nil.
/// It has no state: nothing is written for it and nothing read.
struct IPCNilArg {
  static IPCNilArg nilArg() { return {}; }
  /// Whether the class may be named in an archive that is read against a set of permitted classes.
  static constexpr bool supportsSecureCoding() { return true; }

  friend bool operator==(IPCNilArg, IPCNilArg) { return true; }
};

}  // namespace pendra
