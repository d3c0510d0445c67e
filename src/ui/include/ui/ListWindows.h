#pragma once

namespace pendra {

class CommandTarget;
class MenuModel;
class Session;

/// Makes the window "Customers and Jobs", enters it in the session and shows it. All must outlive it.
void loadCustomerList(Session& session, MenuModel& menus, CommandTarget& commands);
/// The same for the window "Service Items".
void loadServicesList(Session& session, MenuModel& menus, CommandTarget& commands);

}  // namespace pendra
