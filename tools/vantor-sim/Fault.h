#pragma once

#include <QString>
#include <chrono>
#include <optional>

namespace pendra {

/// How the stand-in misbehaves at some call, for tests of whoever calls it.
struct Fault {
  enum class Kind {
    None,
    Stopped,     ///< has got the call, and stands still as a process that was stopped
    Silent,      ///< performs it and does not answer
    Slow,        ///< answers after `delay`
    Dripping,    ///< answers datagram by datagram, each after `delay`
    Dying,       ///< ends before it performs the call
    DyingAfter,  ///< ends when it has performed the call, before it answers
    DyingAmid,   ///< ends in the middle of the answer's datagrams
    WrongName,   ///< answers under the name of another operation
    Twice,       ///< answers twice
    Garbage      ///< answers with bytes that are no archive
  };

  Kind kind = Kind::None;
  std::chrono::milliseconds delay{0};
  int call = 1;                ///< at which call, counted from 1
  bool everyLaterOne = false;  ///< and at every later one
  QString operation;           ///< only calls of this operation count; empty for all

  /// Reads "KIND[=MILLISECONDS][:N[+]]"; none when it is nothing of that form.
  static std::optional<Fault> named(const QString& text);
  /// What `named` reads, for --help.
  static QString help();

  [[nodiscard]] bool isAt(int number) const {
    return kind != Kind::None && (number == call || (everyLaterOne && number > call));
  }
};

}  // namespace pendra
