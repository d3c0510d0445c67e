#pragma once

#include "ui/AppWindow.h"
#include "ui_core/CompletedActivities.h"

class QPushButton;

namespace pendra {

class RowTableView;
class SearchField;

/// "Completed Activities": finds what has left the activity table, and brings it back. It stays open when the
/// document changes.
class CompletedWindow final : public AppWindow {
 public:
  explicit CompletedWindow(const WindowFrame& frame);
  ~CompletedWindow() override;

 private:
  [[nodiscard]] QWidget* makeContent();
  void connectTable();
  void showState();

  CompletedActivities completed_;
  SearchField* search_ = nullptr;
  RowTableView* table_ = nullptr;
  QPushButton* makeCurrent_ = nullptr;
};

}  // namespace pendra
