#pragma once

#include <QFileSystemWatcher>
#include <functional>

#include "platform/Calendar.h"

namespace pendra {

/// Keeps a calendar in the machine's zone while the program runs: after a flight "today" is today.
class ZoneFollower {
 public:
  /// The calendar must outlive it. `folder` is where the machine's zone stands, `ofSystem` reads it.
  explicit ZoneFollower(Calendar& calendar, const QString& folder = QStringLiteral("/etc"),
                        std::function<Calendar()> ofSystem = &Calendar::ofSystem);

 private:
  QFileSystemWatcher watcher_;  // of the folder: the file in it is replaced, not written to
};

}  // namespace pendra
