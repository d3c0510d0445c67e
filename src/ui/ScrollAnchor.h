#pragma once

#include <QObject>

namespace pendra {

class RowTableView;

/// Keeps the rows of a table where they are seen while others come or go above them. At its top a table stays
/// at the top, where what is new is seen.
class ScrollAnchor final : public QObject {
 public:
  /// Follows the table that the view shows at this moment.
  explicit ScrollAnchor(RowTableView& view);

 private:
  void hold();
  void holdMoved(int before, int by);
  void moveTo(int row);

  RowTableView& view_;
  quint64 top_ = 0;  // the object in the first row that is seen; 0: the table is at its top
};

}  // namespace pendra
