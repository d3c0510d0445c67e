#pragma once
// Where documents lie and how they are named. Paths are absolute.

#include <QString>

#include "platform/Places.h"

namespace pendra {

/// The document folder. Kept: in spite of its name it lies in the user's Documents.
QString documentFolder(const Places& places);
/// Where a document without a file will live: Documents itself, "Untitled.pdr", else the first free of
/// "Untitled1.pdr", "Untitled2.pdr", ...
QString untitledPath(const Places& places);

/// Moves a document of the older naming to its new name and returns the path that now counts. A path that
/// does not end in ".xml" stays; so does one that cannot be moved, also because the new name is taken.
QString movedFromOlderName(const QString& path);

}  // namespace pendra
