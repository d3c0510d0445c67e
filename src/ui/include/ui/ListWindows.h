#pragma once

namespace pendra {

class CommandTarget;
class Session;

/// Makes the window "Customers and Jobs", enters it in the session and shows it. All must outlive it.
void loadCustomerList(Session& session, CommandTarget& commands);
/// The same for the window "Service Items".
void loadServicesList(Session& session, CommandTarget& commands);

}  // namespace pendra
