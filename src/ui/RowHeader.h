#pragma once

#include <QHeaderView>
#include <optional>

#include "ui_core/TableModel.h"

namespace pendra {

struct Colours;

/// The words of a head, and the order in which its column has sorted the rows; none when it has not.
struct HeadWords {
  QString title;
  Alignment alignment = Alignment::Left;
  std::optional<bool> ascending{};
};
/// Draws them with the painter's font and pen.
void drawHead(QPainter& painter, const QRect& content, const HeadWords& head);

/// Draws the ground of a head, or of a part of one.
void drawHeadGround(QPainter& painter, const QRect& rect, const Colours& colours);

/// The heads' ground over the scroll bar that stands beside their table.
class HeadCorner final : public QWidget {
  Q_OBJECT
 public:
  /// The table is that of the heads, which has them already.
  HeadCorner(const QHeaderView& heads, QAbstractScrollArea& table);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const QHeaderView& heads_;
};

/// Heads of a RowTableView: quiet words aligned as their columns, a small sign where the rows are sorted.
class RowHeader final : public QHeaderView {
  Q_OBJECT
 public:
  explicit RowHeader(QWidget* parent = nullptr);

  /// How wide the head of a column would like to be, without the cell's padding.
  [[nodiscard]] int naturalWidth(int section) const;
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintSection(QPainter* painter, const QRect& rect, int section) const override;

 private:
  [[nodiscard]] const TableModel* tableModel() const;
  [[nodiscard]] QFont headFont() const;
};

}  // namespace pendra
