#pragma once
// The steps that the editors' list rules are made of. Which step comes when, and with which words, is each
// editor's own: the rules differ on purpose and stand written out in either controller.

#include <QStringList>
#include <functional>
#include <limits>

#include "document/Session.h"
#include "ui_core/EditorControls.h"

namespace pendra {

class Customer;
class ListRecord;

/// What `indexOfName` answers when there is no such item.
inline constexpr qint64 kNotFound = std::numeric_limits<qint64>::max();

/// The first item equal to the text, exactly.
[[nodiscard]] qint64 indexOfName(const QStringList& items, const QString& text);
/// The first item that begins with what was typed, whatever its case; "" when none does.
[[nodiscard]] QString completedName(const QStringList& items, const QString& typed);

/// Whether a text is empty or nothing but blanks and tabs.
[[nodiscard]] bool isBlank(QStringView text);
/// The list that a control of an editor stands for. Kept: promised to those who use the editors: every other
/// field asks for the job when it is left.
[[nodiscard]] OfferedList listOf(const EntryFields& fields, const Control& control);
/// "Customers", "Jobs" or "Services".
[[nodiscard]] QString nameOf(OfferedList list);
/// What the list says while it is empty.
[[nodiscard]] QString emptyListText(OfferedList list);
/// Asks once whether a typed name is to be added to a list.
[[nodiscard]] bool asksToAdd(Alerts& alerts, const QString& name, const QString& listName);

/// What becomes of a name that its list does not have: a linked document refuses it, a standalone one adds it
/// where that is wanted. Answers whether it may stand.
[[nodiscard]] bool takesUnknownName(const Session& session, const std::function<void()>& refuse,
                                    const std::function<bool()>& isWanted, const std::function<void()>& add);

/// Names a new record as one that exists only here, and is none of Vantor's.
ListRecord& makeLocal(ListRecord& record, const QString& name);
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
