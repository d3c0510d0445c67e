#include "platform/Places.h"

#include <QDir>
#include <QStandardPaths>

#include "platform/Identifiers.h"

namespace pendra {

namespace {

/// Qt has no name for it yet.
QString stateFolder() {
  const QString chosen = qEnvironmentVariable("XDG_STATE_HOME");
  return QDir::isAbsolutePath(chosen) ? QDir::cleanPath(chosen) : QDir::homePath() + u"/.local/state";
}

}  // namespace

Places Places::ofUser() {
  const auto folder = [](QStandardPaths::StandardLocation location) {
    return QStandardPaths::writableLocation(location);
  };
  Places places{.documents = folder(QStandardPaths::DocumentsLocation),
                .caches = folder(QStandardPaths::GenericCacheLocation),
                .config = folder(QStandardPaths::GenericConfigLocation),
                .state = stateFolder()};
  if (places.documents.isEmpty()) places.documents = QDir::tempPath();
  return places;
}

QString Places::defaultsFile() const { return config + u'/' + identifiers::kPendra + u"/defaults.ini"; }
QString Places::backupFolder() const { return state + u'/' + identifiers::kPendra + u"/backups"; }

}  // namespace pendra
