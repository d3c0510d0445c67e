#pragma once

#include "ui/RowTableView.h"
#include "ui_core/ActivityEditor.h"

namespace pendra {

/// The activity editor's table of time entries, whose notes are typed over in place.
class TimeEntriesTable final : public RowTableView {
  Q_OBJECT
 public:
  explicit TimeEntriesTable(QWidget* parent = nullptr);
  /// The controller must outlive the table.
  void setController(ActivityEditor& controller);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace pendra
