#pragma once
// The steps that the editors' list rules are made of. Which step comes when, and with which words, is each
// editor's own: the rules differ on purpose and stand written out in either controller.

#include <QStringList>
#include <limits>

#include "document/Session.h"
#include "ui_core/EditorControls.h"

namespace pendra {

class Customer;

/// What `indexOfName` answers when there is no such item.
inline constexpr qint64 kNotFound = std::numeric_limits<qint64>::max();

/// The first item equal to the text, exactly.
[[nodiscard]] qint64 indexOfName(const QStringList& items, const QString& text);
/// The first item that begins with what was typed, whatever its case; "" when none does.
[[nodiscard]] QString completedName(const QStringList& items, const QString& typed);

/// Whether a text is empty or nothing but blanks and tabs.
[[nodiscard]] bool isBlank(QStringView text);
/// The list that a combo box of an editor stands for: "Customers", "Services", else "Jobs".
[[nodiscard]] QString listNameFor(const EntryFields& fields, const Control& popup);
/// What that list says while it is empty.
[[nodiscard]] QString emptyListText(const EntryFields& fields, const Control& popup);
/// Asks once whether a typed name is to be added to a list.
[[nodiscard]] bool asksToAdd(Alerts& alerts, const QString& name, const QString& listName);

/// New list entries that exist only here, each an edit. A customer is offered from now on. Kept: promised to
/// those who keep the lists: a service item is not, until it is marked there.
void addCustomer(ObjectContext& context, const QString& name);
void addService(ObjectContext& context, const QString& name);
void addJob(Customer& customer, const QString& name);

/// Says that a linked document takes only what stands in Vantor's lists.
void showChooseExistingCustomer(Alerts& alerts);
/// The editors name it differently: "Choose an existing service", "Choose an existing service item".
void showChooseExistingService(Alerts& alerts, const QString& message);

}  // namespace pendra
