#include "document/DocumentFiles.h"

#include <QFile>
#include <QFileInfo>
#include <cerrno>

#include "platform/Files.h"
#include "store/PersistentStore.h"

namespace pendra {

QString documentFolder(const Places& places) { return places.documents + u"/Pendra"; }

QString untitledPath(const Places& places) {
  return firstFreePath(places.documents + u"/Untitled", QStringLiteral("pdr"));
}

QString defaultPath(const Places& places) { return documentFolder(places) + u"/Pendra File.xml"; }

bool isDefaultPath(const Places& places, const QString& path) {
  return path == defaultPath(places) || path == documentFolder(places) + u"/Pendra File.pdr";
}

bool isOutOfReach(const QString& path) { return !QFileInfo(QFileInfo(path).path()).isDir(); }

QString movedFromOlderName(const QString& path, const ObjectModel& model) {
  if (!path.endsWith(u".xml") || !PersistentStore::recover(path, model)) return path;
  // Kept for documents in old places: every ".xml" is replaced, a folder's too; then the move fails, the path
  // stays.
  const QString renamed = QString(path).replace(QStringLiteral(".xml"), QStringLiteral(".pdr"));
  const bool isFree = !QFileInfo::exists(renamed) && takeJournalAway(renamed, model);
  return isFree && moveToFreeName(path, renamed) ? renamed : path;
}

Result<void> takeJournalAway(const QString& path, const ObjectModel& model) {
  // What is no document has nothing to be made whole.
  [[maybe_unused]] const auto recovered = PersistentStore::recover(path, model);
  const QString journal = journalOf(path);
  if (QFileInfo::exists(journal) && !QFile::remove(journal)) return systemError(errno);
  return {};
}

}  // namespace pendra
