#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>

namespace pendra {

/// Lets events happen until `condition` holds. False when it does not within `milliseconds`; a test that
/// passes never waits that long.
template <class Condition>
[[nodiscard]] bool eventually(Condition condition, int milliseconds = 10000) {
  const QDeadlineTimer deadline(milliseconds);
  while (!condition()) {
    if (deadline.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  }
  return true;
}

}  // namespace pendra
