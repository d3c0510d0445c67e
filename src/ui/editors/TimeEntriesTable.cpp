#include "ui/TimeEntriesTable.h"

#include <QHeaderView>
#include <QKeyEvent>

#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kVisibleRows = 5;

}  // namespace

TimeEntriesTable::TimeEntriesTable(QWidget* parent) : RowTableView(parent) {
  setFrameShape(QFrame::StyledPanel);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setEmptyState(tr("No time has been entered yet."));
}

void TimeEntriesTable::setController(ActivityEditor& controller) {
  setTable(controller.rows(), controller.selection());
  tableModel().setEditRules(
      {.shouldEdit = [&](const QString& column, int row) { return controller.isEditable(column, row); },
       .textForEditing = [&](const QString&, int row) { return controller.noteForEditing(row); },
       .setValue = [&](const QString& value, const QString& column,
                       int row) { controller.setValue(value, column, row); }});
  connect(this, &RowTableView::rowActivated, this,
          [this](int row) { editCell(QStringLiteral("notes"), row); });
}

QSize TimeEntriesTable::sizeHint() const {
  return {480, metrics::kHeadHeight + kVisibleRows * metrics::kRowHeight + 2 * frameWidth()};
}

void TimeEntriesTable::keyPressEvent(QKeyEvent* event) {
  const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  // The Return that ends a cell is not the sheet's OK.
  if (isReturn && state() == EditingState) return event->accept();
  RowTableView::keyPressEvent(event);
}

}  // namespace pendra
