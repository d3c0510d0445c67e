#include "platform/Places.h"

#include <QDir>
#include <QStandardPaths>

#include "platform/Identifiers.h"

namespace pendra {

Places Places::ofUser() {
  const auto folder = [](QStandardPaths::StandardLocation location) {
    return QStandardPaths::writableLocation(location);
  };
  Places places{.documents = folder(QStandardPaths::DocumentsLocation),
                .caches = folder(QStandardPaths::GenericCacheLocation),
                .config = folder(QStandardPaths::GenericConfigLocation)};
  if (places.documents.isEmpty()) places.documents = QDir::tempPath();
  return places;
}

QString Places::defaultsFile() const { return config + u'/' + identifiers::kPendra + u"/defaults.ini"; }

}  // namespace pendra
