#pragma once

#include <QString>
#include <span>

namespace pendra::words {

/// The name of the customer, job (of any customer) or service of that number; never twice the same.
QString customer(int number);
QString job(int number);
QString service(int number);

/// Notes as people write them; the first of an activity's is longer than a note should be.
std::span<const QString> activityNotes();
/// Among them notes with tabs, quotes and line breaks.
std::span<const QString> entryNotes();

}  // namespace pendra::words
