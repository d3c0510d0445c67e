#pragma once

#include <QString>
#include <chrono>
#include <optional>

namespace pendra {

/// How the stand-in misbehaves, for tests of whoever calls it.
struct Fault {
  enum class Kind {
    None,
    Late,             ///< answers after `delay`
    WrongName,        ///< answers under the name of another selector
    NoAnswer,         ///< performs and keeps silent
    Garbage,          ///< answers with bytes that are no archive
    DieInList,        ///< ends in the middle of its answer's datagrams, or before a short answer
    DieBeforeRecord,  ///< ends when it has got a record, and keeps nothing
    DieAfterRecord,   ///< ends when it has kept a record, and does not answer
    SlowRead          ///< looks at its socket only once in `delay`
  };

  Kind kind = Kind::None;
  std::chrono::milliseconds delay{0};
  QString selector;  ///< the only selector that it concerns; empty for all
  int after = 0;     ///< so many calls are well answered first

  /// The fault of a name such as "no-answer" or "late=3000" (milliseconds); none when there is none of that
  /// name.
  static std::optional<Fault> named(const QString& text);
};

}  // namespace pendra
