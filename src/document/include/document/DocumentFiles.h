#pragma once
// Where documents lie and how they are named. Paths are absolute. A document that a killed program left half
// written has a journal beside it and is whole only with that: whoever gives a document another name, or its
// name to another file, sees to the journal first.

#include <QString>

#include "platform/Places.h"
#include "platform/Result.h"
#include "store/Descriptors.h"

namespace pendra {

/// The document folder. In spite of its name it lies in the user's Documents.
QString documentFolder(const Places& places);
/// Where a document without a file will live: Documents itself, "Untitled.pdr", else the first free of
/// "Untitled1.pdr", "Untitled2.pdr", ...
QString untitledPath(const Places& places);
/// The document that a first launch makes. Kept for who has an old one: asked for under its older name.
QString defaultPath(const Places& places);
/// Whether the path is that of the default document, by its older name or its newer one.
[[nodiscard]] bool isDefaultPath(const Places& places, const QString& path);

/// Whether not even the folder is there in which the document lies, as on a medium that was taken out.
[[nodiscard]] bool isOutOfReach(const QString& path);

/// Moves a document of the older naming to its new name and returns the path that now counts. A path that
/// does not end in ".xml" stays; so does a file that is no document of ours, is held by another program, or
/// cannot be moved, also because the new name is taken.
QString movedFromOlderName(const QString& path, const ObjectModel& model);

/// Makes way for a file that is about to get the name: a document that stands there is made whole without its
/// journal, and no journal is left that would be read as the new file's.
Result<void> takeJournalAway(const QString& path, const ObjectModel& model);

}  // namespace pendra
