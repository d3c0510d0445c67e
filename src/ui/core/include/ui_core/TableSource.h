#pragma once
// What a table shows and how it looks are two things. A TableSource answers what stands in a cell, in plain
// values and names for looks (CellKind); the widgets decide what a link or a running row looks like.

#include <QString>
#include <QStringList>
#include <span>

namespace pendra {

/// Where a cell's content and its head stand.
enum class Alignment { Left, Center, Right };

/// What a cell is to the person who looks at it.
enum class CellKind {
  Text,
  TwoLines,       ///< the second one quiet
  Secondary,      ///< words that matter less than those beside them
  Time,           ///< tabular figures; green and semibold in a running row
  SecondaryTime,  ///< the same, quiet while the row does not run
  StartStop,      ///< a play or pause sign; a press acts
  Link,           ///< its text is what a press does
  Check,          ///< a check box; a press turns it over
};

/// Whether a press on the cell does something beyond selecting its row.
constexpr bool actsOnPress(CellKind kind) {
  return kind == CellKind::StartStop || kind == CellKind::Link || kind == CellKind::Check;
}

/// A column, apart from its content.
struct ColumnHead {
  QString identifier{};
  QString title{};           ///< what the head shows; may be empty
  QString accessibleName{};  ///< empty: the title
  Alignment alignment = Alignment::Left;
  CellKind kind = CellKind::Text;
  bool sortable = true;
  int weight = 0;  ///< share of the width that is left; 0: as wide as its content needs
  /// Without a weight: texts among which is the widest to expect. None: the kind's own width.
  QStringList widest{};
};

/// What the rows are ordered by. Without a key all rows are equal.
struct SortOrder {
  QString key{};
  bool ascending = true;
  friend bool operator==(const SortOrder&, const SortOrder&) = default;
};

/// The rows and columns of one table. Any index past the end reads as empty text, not running, unchecked.
class TableSource {
 public:
  virtual ~TableSource();
  [[nodiscard]] virtual int rowCount() const = 0;
  [[nodiscard]] virtual int columnCount() const = 0;
  [[nodiscard]] virtual const ColumnHead& head(int column) const = 0;
  [[nodiscard]] virtual QString text(int row, int column) const = 0;
  /// Names the object that the row shows, so that a selection follows it over a reload. 0: none.
  [[nodiscard]] virtual quint64 identity(int row) const = 0;
  [[nodiscard]] virtual bool isRunning(int row) const = 0;
  /// Whether the row is done with and all of its words are secondary.
  [[nodiscard]] virtual bool isQuiet(int row) const = 0;
  [[nodiscard]] virtual bool isChecked(int row, int column) const = 0;
  /// Why the cell is marked as needing attention, as a sentence; empty when it is not.
  [[nodiscard]] virtual QString warning(int row, int column) const = 0;
  /// Whether the text of the cell can be typed over in the table.
  [[nodiscard]] virtual bool isEditable(int row, int column) const = 0;
  virtual void sortBy(const SortOrder& descriptor) = 0;
  [[nodiscard]] virtual const SortOrder& sortOrder() const = 0;
};

}  // namespace pendra
