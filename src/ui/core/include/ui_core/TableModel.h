#pragma once
// What a table shows and how it looks are two things. A TableModel answers what stands in a cell, in plain
// values and names for looks (CellKind); the widgets decide what a link or a running row looks like.

#include <QAbstractTableModel>
#include <QSet>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

#include "platform/Notifier.h"
#include "ui_core/SearchText.h"

namespace pendra {

struct CellReading;

/// Where a cell's content and its head stand.
enum class Alignment { Left, Center, Right };

/// What a cell is to the person who looks at it.
enum class CellKind {
  Text,
  TwoLines,       ///< the second one quiet
  Secondary,      ///< words that matter less than those beside them
  Time,           ///< tabular figures; green and semibold in a running row
  SecondaryTime,  ///< the same, quiet while the row does not run
  Day,            ///< quiet when the row above it is of the same day
  Moment,         ///< a time of day in tabular figures
  OpenMoment,     ///< the same, and a quiet word while the row runs
  StartStop,      ///< a play or pause sign; a press acts
  Star,           ///< filled for a favourite; a press turns it over
  State,          ///< what there is to know about the row, as a sign; a press on it acts
  Link,           ///< its text is what a press does
  Check,          ///< a check box; a press turns it over
};

/// Whether a press on the cell does something beyond selecting its row.
constexpr bool actsOnPress(CellKind kind) {
  return kind == CellKind::StartStop || kind == CellKind::Star || kind == CellKind::State ||
         kind == CellKind::Link || kind == CellKind::Check;
}

/// Whether the cell is on or off.
constexpr bool isOnOrOff(CellKind kind) { return kind == CellKind::Check || kind == CellKind::Star; }

/// What a row is marked with beside that it runs.
enum class RowSign { None, Warning, Waiting };

/// How a row stands to the one above it, where the order puts rows together that belong together.
enum class InGroup { Ungrouped, First, Further };

/// A column, apart from its content.
struct ColumnHead {
  QString identifier{};
  QString title{};           ///< what the head shows; may be empty
  QString accessibleName{};  ///< empty: the title
  Alignment alignment = Alignment::Left;
  CellKind kind = CellKind::Text;
  bool sortable = true;
  bool canHide = false;  ///< by the person who looks at the table
  int weight = 0;        ///< share of the width that is left; 0: as wide as its content needs
  /// Without a weight: texts among which is the widest to expect. None: the kind's own width.
  QStringList widest{};
};

/// A column whose lengths of time stand at the right, under one another.
[[nodiscard]] ColumnHead columnHead(const QString& identifier, const QString& title, CellKind kind,
                                    int weight);

/// What the rows are ordered by. Without a key all rows are equal.
struct SortOrder {
  QString key{};
  bool ascending = true;
  friend bool operator==(const SortOrder&, const SortOrder&) = default;
};

/// Neighbouring rows, both ends included.
struct RowRange {
  int first;
  int last;
};

/// More ranges than these are told as one reset.
inline constexpr std::size_t kMostRanges = 64;

/// Rows in ascending order as ranges, so that many neighbours are told at once.
class RowRanges {
 public:
  void add(int row);
  [[nodiscard]] const std::vector<RowRange>& ranges() const { return ranges_; }
  [[nodiscard]] bool areMany() const { return ranges_.size() > kMostRanges; }

 private:
  std::vector<RowRange> ranges_;
};

/// What turns one order of rows into another, each row named by its identity.
struct RowChanges {
  RowChanges(const std::vector<quint64>& before, const std::vector<quint64>& after);
  RowRanges gone;          ///< among the rows before
  RowRanges come;          ///< among the rows after
  std::vector<int> order;  ///< for each row that stays, in the new order, its place in the old one
  [[nodiscard]] bool areMany() const;
};

/// The rows and columns of one table, as Qt's views take them. Any index past the end reads as empty text,
/// not running, unchecked. Whatever changes the rows tells it, and no more than that.
class TableModel : public QAbstractTableModel {
 public:
  enum Role {
    kKindRole = Qt::UserRole,
    kRunningRole,
    kQuietRole,
    kSumRole,
    kIdentityRole,
    kWarningRole,
    kSignRole,
    kRemarkRole,
    kGroupRole,
    kFollowsRole  ///< whether the cell shows what it will hold
  };

  /// What the owner of the rows says about typing over a cell. Any part may be left out.
  struct EditRules {
    /// Asked when an editor is about to open over an editable cell.
    std::function<bool(const QString& identifier, int row)> shouldEdit{};
    /// What the editor starts with; left out: what the cell shows.
    std::function<QString(const QString& identifier, int row)> textForEditing{};
    /// Takes the text that was typed.
    std::function<void(const QString& value, const QString& identifier, int row)> setValue{};
    /// Why a cell that could be typed over cannot be at this moment, as a sentence.
    std::function<QString(const QString& identifier, int row)> whyNot{};
    /// Says while a text is typed what storing it will do.
    std::function<CellReading(const QString& text, const QString& identifier, int row)> read{};
  };
  void setEditRules(EditRules rules) { edits_ = std::move(rules); }
  [[nodiscard]] bool shouldEdit(const QModelIndex& index) const;
  [[nodiscard]] QString whyNot(const QModelIndex& index) const;
  /// Whether there is something to say while a text is typed, and what.
  [[nodiscard]] bool readsTyping() const { return edits_.read != nullptr; }
  [[nodiscard]] CellReading read(const QString& text, const QModelIndex& index) const;

  /// A cell that shows what it will hold once another cell of its row has been stored.
  struct Following {
    quint64 identity = 0;  ///< of the row; 0: there is no such cell
    QString column{};
    QString text{};
    friend bool operator==(const Following&, const Following&) = default;
  };
  void setFollowing(Following following);

  [[nodiscard]] virtual const ColumnHead& head(int column) const = 0;
  [[nodiscard]] virtual QString text(int row, int column) const = 0;
  /// Names the object that the row shows, so that a selection follows it over a reset. 0: none.
  [[nodiscard]] virtual quint64 identity(int row) const = 0;
  [[nodiscard]] virtual bool isRunning(int row) const = 0;
  /// Whether the row is done with and all of its words are secondary.
  [[nodiscard]] virtual bool isQuiet(int row) const = 0;
  /// Whether the row sums up those above it.
  [[nodiscard]] virtual bool isSum(int row) const = 0;
  [[nodiscard]] virtual bool isChecked(int row, int column) const = 0;
  /// Why the cell is marked as needing attention, as a sentence; empty when it is not.
  [[nodiscard]] virtual QString warning(int row, int column) const = 0;
  /// What the row is marked with.
  [[nodiscard]] virtual RowSign sign(int row) const = 0;
  /// What is said in the cell before its own text, because it matters more; mostly empty.
  [[nodiscard]] virtual QString remark(int row, int column) const = 0;
  [[nodiscard]] virtual InGroup groupPlace(int row) const = 0;
  /// Whether the text of the cell can be typed over in the table.
  [[nodiscard]] virtual bool isEditable(int row, int column) const = 0;
  /// Sorts the rows; without a key nothing happens.
  virtual void sortBy(const SortOrder& order) = 0;
  [[nodiscard]] virtual const SortOrder& sortOrder() const = 0;

  /// What is looked for among the rows; its letters stand out.
  [[nodiscard]] const SearchText& searchText() const { return search_; }
  void setSearchText(const SearchText& text) { search_ = text; }

  /// Columns that are not shown are still there, for whoever asks for them by name.
  [[nodiscard]] bool isHidden(QStringView identifier) const;
  void setHidden(const QString& identifier, bool hidden);
  /// Announces that other columns are shown.
  Notifier shownColumnsChanges;

  [[nodiscard]] std::optional<int> columnOf(QStringView identifier) const;
  /// The row that shows that object; none for 0.
  [[nodiscard]] std::optional<int> rowWith(quint64 identity) const;

  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 protected:
  /// Tells that the cells of these rows changed.
  void tellChanged(const RowRanges& rows);
  /// While the layout changes: the row that stands at `order[n]` will stand at n.
  void movePersistentIndexes(const std::vector<int>& order);

 private:
  [[nodiscard]] QString accessibleText(const QModelIndex& index) const;
  [[nodiscard]] bool follows(const QModelIndex& index) const;
  [[nodiscard]] QString shownText(const QModelIndex& index) const;

  EditRules edits_;
  Following following_;
  QSet<QString> hidden_;
  SearchText search_;
};

}  // namespace pendra
