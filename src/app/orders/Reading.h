#pragma once
// What is only asked is read from the file, whoever has it open. No bus is needed for that.

#include <QVariant>

#include "Order.h"
#include "store/ObjectContext.h"

namespace pendra {

/// Whether a command leaves everything as it is.
[[nodiscard]] bool onlyAsks(Verb verb);
/// The answer to `status`, `log` or `report` for a document that was read.
[[nodiscard]] Result<QVariant> answerFrom(const ObjectContext& context, const Order& order,
                                          Qt::DayOfWeek weekBegins);
/// The answer for the user of this machine.
[[nodiscard]] Result<QVariant> read(const Order& order);

/// Reads the document that is meant, which is the last one where none is named, without changing it. Its
/// path.
[[nodiscard]] Result<QString> look(const Order& order, ObjectContext& context, const ObjectModel& model);
/// Why nothing can be done with a document.
[[nodiscard]] Error unusable(const QString& path, const Error& why);

}  // namespace pendra
