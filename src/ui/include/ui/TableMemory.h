#pragma once

#include <QObject>
#include <QTimer>

#include "platform/UserDefaults.h"
#include "ui_core/TableArrangement.h"

namespace pendra {

class RowTableView;

/// Arranges a table as it was arranged when it went last, and lets its columns be moved. When what is
/// remembered is emptied, the columns are as they are by themselves. A child of the view.
class TableMemory final : public QObject {
 public:
  /// Arranges the view, which shows its table already. The defaults must outlive the view.
  TableMemory(RowTableView& view, UserDefaults& defaults, QString key);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] TableArrangement arrangement() const;
  void arrange(const TableArrangement& arrangement);
  void store();
  void reset();

  RowTableView& view_;
  UserDefaults& defaults_;
  QString key_;
  QTimer soon_;  // while a width is dragged it is not stored at every step
  Notifier::Subscription shownColumns_;
  Notifier::Subscription forgotten_;
};

}  // namespace pendra
