#pragma once
// Where a document cannot be saved to its own place, or may not be because another file may be meant by that,
// the user decides; nothing of it is done unasked but the last.

#include <QString>
#include <vector>

#include "document/Notices.h"

namespace pendra {

class Session;

/// What the user can do about the document not being saved, as actions of the notice that says so.
[[nodiscard]] std::vector<NoticeAction> waysToSave(Session& session);

/// Asks for a name and writes the whole document there as it is in memory. It stays open at its own place.
void saveACopy(Session& session);
/// Writes the whole document over what stands at its place.
void saveOverIt(Session& session);
/// Leaves what stands at the document's place and goes on in a new file beside it.
void keepBoth(Session& session);
/// Goes on with the document's file where it was moved to.
void followIt(Session& session);

/// Nobody can be asked any more: writes what could not be saved beside the document, or where there is room,
/// which the next launch opens and tells of.
void rescue(Session& session);
/// Tells of such a copy, once.
void tellOfRescued(Session& session);

/// Says that a file has been written, and offers to show it.
void sayWritten(Session& session, const QString& key, const QString& path);

}  // namespace pendra
