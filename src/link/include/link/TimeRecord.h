#pragma once

#include <QString>

namespace pendra {

class Activity;
class Identity;
class TimeEntry;

/// The first line of what is sent for one record.
extern const QString kTimeRecordDeclaration;

/// One time record, from "<record>" to "</record>", every line ended by a line feed. Kept, because Vantor
/// reads it so: the values stand in it as they are, nothing is escaped, and what is missing reads "(null)".
QString timeRecord(const Activity& activity, const TimeEntry& entry, const Identity* identity);

}  // namespace pendra
