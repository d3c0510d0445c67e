#pragma once
// The selection of a table belongs to whoever owns the rows, so that every rule about it is tested without a
// window; a view only shows it. Insertions, removals and sorts it follows as any of Qt's selections do; over
// a reset it finds its objects again by their identity.

#include <QItemSelectionModel>
#include <vector>

#include "platform/Notifier.h"
#include "ui_core/TableModel.h"

namespace pendra {

/// Which rows of a table are selected, and which cell is the current one.
class TableSelection : public QItemSelectionModel {
 public:
  /// The table must outlive it.
  explicit TableSelection(TableModel& table, QObject* parent = nullptr);

  /// The selected rows, ascending.
  [[nodiscard]] std::vector<int> rows() const;
  /// The first of them; -1 when none is selected.
  [[nodiscard]] int row() const;
  /// Announces that other objects are selected now. Qt's own signal comes also when their rows have only
  /// moved.
  Notifier changes;
  /// Makes this row the only selected one and the current one; announced also when it is the same one again.
  void selectRow(int row) { selectRows({row}); }
  /// The same for several, of which the first becomes the current one. Those past the end are left out.
  void selectRows(std::vector<int> rows);

  /// Keeps what is selected, by object; what is lost with its object is announced.
  void reset() override;

 private:
  struct Kept {
    std::vector<quint64> selected;
    quint64 current = 0;
    int column = 0;
  };
  [[nodiscard]] Kept kept() const;
  void lookAgain();
  [[nodiscard]] QItemSelection rangesOf(const std::vector<int>& rows) const;

  TableModel& table_;
  std::optional<Kept> beforeReset_;
  std::vector<quint64> announced_;  // the objects, sorted
};

}  // namespace pendra
