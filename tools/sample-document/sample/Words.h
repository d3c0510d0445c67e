#pragma once

#include <QString>
#include <span>

namespace pendra::words {

/// What things are called in a sample. The name of a number is never twice the same.
struct Words {
  QString (*customer)(int number);
  QString (*job)(int number);
  QString (*service)(int number);
  std::span<const QString> activityNotes;
  std::span<const QString> entryNotes;
};

/// With whatever a program stumbles over: quotes, stars, other scripts' letters, tabs, a note that is too
/// long.
const Words& trying();
/// As they are read without a second look.
const Words& everyday();

}  // namespace pendra::words
