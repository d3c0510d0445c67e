#pragma once

#include <QVariant>

#include "Order.h"

namespace pendra {

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

/// What is printed: an answer to standard output, in lines or as JSON.
[[nodiscard]] QByteArray printed(const Order& order, const QVariant& answer);
[[nodiscard]] QByteArray printedAsJson(const Error& error);

}  // namespace pendra
