#include "ui_core/ListEditor.h"

#include "document/Session.h"

namespace pendra {

namespace {

void openOnce(Session& session, Interface interface, AuxiliaryWindow* Session::*controller) {
  if (!(session.*controller)) session.ports().interfaces.load(interface);
  if (session.*controller) (session.*controller)->bringToFront();
}

}  // namespace

void showCustomerList(Session& session) {
  openOnce(session, Interface::CustomerList, &Session::customerListController);
}

void showServicesList(Session& session) {
  openOnce(session, Interface::ServicesList, &Session::servicesListController);
}

}  // namespace pendra
