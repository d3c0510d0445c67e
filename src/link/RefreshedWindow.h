#pragma once

#include "document/Session.h"

namespace pendra {

/// Shows the windows anew when the lists have been fetched, also when fetching them failed half-way.
class [[nodiscard]] RefreshedWindow {
 public:
  explicit RefreshedWindow(Session& session) : session_(session) {}
  ~RefreshedWindow() {
    for (AuxiliaryWindow* editor : {session_.customerListController, session_.servicesListController}) {
      if (editor) editor->reloadData();
    }
    if (!session_.window) return;
    session_.window->reloadData();
    session_.window->updateMainButton();
  }
  RefreshedWindow(const RefreshedWindow&) = delete;
  RefreshedWindow& operator=(const RefreshedWindow&) = delete;

 private:
  Session& session_;
};

}  // namespace pendra
