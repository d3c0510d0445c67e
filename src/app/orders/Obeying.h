#pragma once
// How the command line is answered: what is only asked is read from the file, whoever has it open; what is to
// be done the running program does, and without one it is done to the file, held as the program holds it.

#include "Order.h"
#include "document/OpenDocument.h"
#include "platform/Places.h"
#include "store/ObjectContext.h"

namespace pendra {

/// The answer to `status`, `log` and `report` for a document that was read.
[[nodiscard]] Result<QVariant> answerFrom(const ObjectContext& context, const Order& order,
                                          Qt::DayOfWeek weekBegins);

/// Does to a document what a command asks that changes or copies it.
[[nodiscard]] Result<QVariant> carryOut(OpenDocument& document, const ObjectModel& model, const Order& order);

/// What is printed: an answer to standard output, in lines or as JSON.
[[nodiscard]] QByteArray printed(const Order& order, const QVariant& answer);
[[nodiscard]] QByteArray printedAsJson(const Error& error);

/// How a command ends in a terminal.
struct Said {
  int status = 0;
  QByteArray printed{};  ///< to standard output
  QByteArray refused{};  ///< to standard error
};
[[nodiscard]] Said said(const Order& order, const Result<QVariant>& answer);
/// Why an order was not carried out.
[[nodiscard]] Said said(const Error& error, bool asJson);
/// Prints it. With what status to end.
[[nodiscard]] int show(const Said& said);

/// Carries an order out for the user of this machine and prints the answer. With what status to end.
[[nodiscard]] int obey(const Order& order);

}  // namespace pendra
