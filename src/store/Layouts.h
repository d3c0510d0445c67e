#pragma once

#include <QString>

#include "platform/Result.h"
#include "store/Descriptors.h"

namespace pendra {

class Connection;

/// The tables of a document's database. Every function throws SQLite::Exception and changes nothing then.
namespace layouts {

/// Makes the tables of a new document, in the newest layout.
void create(Connection& connection, const ObjectModel& model);
/// The number that the document's layout says it has.
int numberOf(Connection& connection);
/// Reads every page. Being the first to read, it also takes back what a save that was killed has left.
void checkPages(Connection& connection);
/// Checks that whatever the model reads stands in the document, or would after an upgrade.
void checkColumns(Connection& connection, const ObjectModel& model);
/// Brings a document to the newest layout in one transaction, which is checked before it is committed. The
/// number alone does not say what an old document holds: a column is added where it is missing.
void upgrade(Connection& connection, const ObjectModel& model);

}  // namespace layouts

}  // namespace pendra
