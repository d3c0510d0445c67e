#pragma once
// How the command line is answered: what is only asked is read from the file, whoever has it open; what is to
// be done the running program does, and without one it is done to the file, held as the program holds it.

#include <QVariant>

#include "Order.h"
#include "document/OpenDocument.h"

namespace pendra {

/// Does to a document what a command asks that changes or copies it.
[[nodiscard]] Result<QVariant> carryOut(OpenDocument& document, const ObjectModel& model, const Order& order);

/// Carries an order out for the user of this machine.
[[nodiscard]] Result<QVariant> obey(const Order& order);

}  // namespace pendra
