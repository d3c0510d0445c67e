#pragma once
// The yardstick: the time log as a first draft would have it, with eager copies and no filters that act.

#include <QString>
#include <vector>

#include "platform/Calendar.h"
#include "store/ObjectContext.h"

namespace pendra {
class TimeEntry;
}

namespace pendra::plain {

struct Row {
  QString customer, job, service;
  double start = 0, duration = 0, submitted = 0;
};

/// One loop over the activities and their entries.
std::vector<Row> rowsOf(const ObjectContext& context);
/// The same for one customer and the starts between two instants.
std::vector<Row> rowsOf(const ObjectContext& context, const QString& customer, Instant from, Instant to);
/// The entries in whose notes, or in a name of whose activity, a word stands.
std::vector<const TimeEntry*> found(const ObjectContext& context, const QString& word);
/// Sorts by the value or the text of a column, which is read once for each row.
void sortBy(std::vector<Row>& rows, const QString& column, const Calendar& calendar);
/// The bytes of the exported file.
QByteArray exported(const ObjectContext& context);
/// Writes the bytes in one piece.
void write(const QString& path, const QByteArray& bytes);

}  // namespace pendra::plain
