#pragma once

#include <QStyledItemDelegate>

#include "ui_core/TableModel.h"

namespace pendra {

/// Paints every kind of cell of a RowTableView.
class RowDelegate final : public QStyledItemDelegate {
  Q_OBJECT
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void setHovered(const QModelIndex& index) { hovered_ = index; }
  [[nodiscard]] QModelIndex hovered() const { return hovered_; }

  [[nodiscard]] static CellKind kindOf(const QModelIndex& index);
  /// How wide a cell's content would like to be.
  [[nodiscard]] static int naturalWidth(CellKind kind, const QString& text, const QFont& font);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QPersistentModelIndex hovered_;
};

}  // namespace pendra
