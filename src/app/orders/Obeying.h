#pragma once
// How the command line is answered: what is only asked is read from the file, whoever has it open; what is to
// be done the running program does, and without one it is done to the file, held as the program holds it.

#include "Order.h"
#include "platform/Places.h"
#include "store/ObjectContext.h"

namespace pendra {

/// The answer to `status`, `log` and `report` for a document that was read.
[[nodiscard]] Result<QVariant> answerFrom(const ObjectContext& context, const Order& order,
                                          Qt::DayOfWeek weekBegins);

/// What is printed: an answer to standard output, in lines or as JSON.
[[nodiscard]] QByteArray printed(const Order& order, const QVariant& answer);
[[nodiscard]] QByteArray printedAsJson(const Error& error);

/// Carries an order out for the user of this machine and prints the answer. With what status to end.
[[nodiscard]] int obey(const Order& order);
/// Prints why an order was not carried out. With what status to end.
[[nodiscard]] int refuse(const Error& error, bool asJson);

}  // namespace pendra
