#pragma once

#include <QFont>
#include <QMap>
#include <QStringList>
#include <vector>

namespace pendra {

class RowTableView;

/// How wide the columns of a RowTableView are. Each is as wide as its content; what they leave is shared by
/// those with a weight, or, on the grid of the timer window, given to each by its place. A width that was set
/// by hand stays what it is.
class ColumnWidths {
 public:
  explicit ColumnWidths(RowTableView& view) : view_(view) {}

  /// The view has another table.
  void followTable();
  /// Shows the columns that the table shows, and hides the others.
  void showColumns();
  void standOnGrid() { onGrid_ = true; }
  void distribute();
  /// A width that was dragged is kept: on the grid as it is, and answered; elsewhere in proportion.
  bool keepDragged(int section, int width);
  [[nodiscard]] const QMap<QString, int>& byHand() const { return byHand_; }
  void setByHand(QMap<QString, int> widths) { byHand_ = std::move(widths); }

 private:
  void distributeByWeight();
  void distributeOnGrid();
  [[nodiscard]] bool hasOwnWidth(int column) const;
  /// The texts of a column of which one is the widest, its title first.
  [[nodiscard]] QStringList widestTexts(int column) const;
  [[nodiscard]] int measure(int column, const QStringList& texts) const;
  [[nodiscard]] int contentWidth(int column);
  [[nodiscard]] int gridWidth(int column);
  /// The column that takes what the others leave on the grid: the notes, or the last one before them.
  [[nodiscard]] int flexibleColumn() const;
  /// Takes so much off the columns of words, the widest first.
  void squeeze(int excess);

  /// A width and what it was measured of: a window that comes up asks for the same ones many times.
  struct Measured {
    QStringList texts;
    QFont font;
    int width = 0;
  };

  RowTableView& view_;
  std::vector<double> weights_;
  std::vector<Measured> measured_;  // of each column
  QMap<QString, int> byHand_;
  bool onGrid_ = false;
  bool distributing_ = false;
};

}  // namespace pendra
