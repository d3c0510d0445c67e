#include "platform/ZoneFollower.h"

namespace pendra {

ZoneFollower::ZoneFollower(Calendar& calendar, const QString& folder, std::function<Calendar()> ofSystem)
    : watcher_({folder}) {
  QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &watcher_,
                   [&calendar, ofSystem = std::move(ofSystem)] { calendar = ofSystem(); });
}

}  // namespace pendra
