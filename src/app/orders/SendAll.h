#pragma once
// Sending without a person: all that is not sent yet goes to Vantor as the menu sends it, and whatever a
// person would be asked about ends it before anything else leaves.

#include <QVariantMap>

#include "Order.h"
#include "link/ListSync.h"
#include "platform/UnaskedAlerts.h"

namespace pendra::orders {

/// What sending needs of the program; all must outlive the call.
struct Sender {
  Session& session;
  UnaskedAlerts& alerts;
  ConnectionChecks& checks;
  ListSync& lists;
};

/// How many entries were sent, and of how many it is not known. Fails with what stopped it, and then says
/// what had left by then.
[[nodiscard]] Result<QVariantMap> sendAll(const Sender& sender);

/// The same without a program: the document is read, sent and let go of.
[[nodiscard]] Result<QVariantMap> sendAllOf(std::unique_ptr<OpenDocument> document, const ObjectModel& model,
                                            const Clock& clock, const Calendar& calendar);

}  // namespace pendra::orders
