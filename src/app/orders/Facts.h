#pragma once
// What a document says, as others are told it: names and numbers that keep their meaning, in the form of
// JSON. What is absent is there as null. Lengths of what runs are those of a moment.

#include <QVariantMap>

#include "Order.h"
#include "model/Activity.h"
#include "model/TimeEntry.h"
#include "store/ObjectContext.h"

namespace pendra::facts {

/// Its names and whether it is billable.
[[nodiscard]] QVariantMap ofActivity(const Activity& activity);
/// An entry of an activity, with the names of that; what has no notes of its own has none.
[[nodiscard]] QVariantMap ofEntry(const TimeEntry& entry, const ObjectContext& context);
/// Those that run, each with since when and how long.
[[nodiscard]] QVariantList running(const ObjectContext& context);
[[nodiscard]] QVariantMap status(const ObjectContext& context, const QString& document,
                                 Qt::DayOfWeek weekBegins);
/// The entries that an order asks for, by their start. Fails where no customer has the name.
[[nodiscard]] Result<QVariantList> log(const ObjectContext& context, const Order& order);
/// The hours that an order asks for, in groups within groups, the longest first and days in their order.
[[nodiscard]] QVariantMap report(const ObjectContext& context, const Order& order);

}  // namespace pendra::facts
