#include "ui_core/TableModel.h"

#include <QHash>
#include <QSet>

#include "platform/Translation.h"
#include "ui_core/CellReading.h"

namespace pendra {

namespace {

int flagsOf(Alignment alignment) {
  switch (alignment) {
    case Alignment::Left:
      return Qt::AlignLeft | Qt::AlignVCenter;
    case Alignment::Center:
      return Qt::AlignCenter;
    case Alignment::Right:
      return Qt::AlignRight | Qt::AlignVCenter;
  }
  return Qt::AlignVCenter;
}

}  // namespace

void RowRanges::add(int row) {
  if (!ranges_.empty() && ranges_.back().last == row - 1) {
    ranges_.back().last = row;
  } else {
    ranges_.push_back({row, row});
  }
}

RowChanges::RowChanges(const std::vector<quint64>& before, const std::vector<quint64>& after) {
  const QSet<quint64> wanted(after.begin(), after.end());
  QHash<quint64, int> staying;
  for (std::size_t row = 0; row < before.size(); ++row) {
    if (before[row] == 0 || !wanted.contains(before[row])) {
      gone.add(static_cast<int>(row));
    } else {
      staying.insert(before[row], static_cast<int>(staying.size()));
    }
  }
  for (std::size_t row = 0; row < after.size(); ++row) {
    const auto place = staying.constFind(after[row]);
    if (place == staying.cend()) {
      come.add(static_cast<int>(row));
    } else {
      order.push_back(*place);
    }
  }
}

bool RowChanges::areMany() const { return gone.ranges().size() + come.ranges().size() > kMostRanges; }

ColumnHead columnHead(const QString& identifier, const QString& title, CellKind kind, int weight) {
  const bool isTime = kind == CellKind::Time || kind == CellKind::SecondaryTime;
  return {.identifier = identifier,
          .title = title,
          .alignment = isTime ? Alignment::Right : Alignment::Left,
          .kind = kind,
          .weight = weight};
}

bool TableModel::isHidden(QStringView identifier) const { return hidden_.contains(identifier.toString()); }

void TableModel::setHidden(const QString& identifier, bool hidden) {
  if (isHidden(identifier) == hidden) return;
  const Notifier::Change change(shownColumnsChanges);
  if (hidden) {
    hidden_.insert(identifier);
  } else {
    hidden_.remove(identifier);
  }
}

std::optional<int> TableModel::columnOf(QStringView identifier) const {
  for (int column = 0; column < columnCount(); ++column) {
    if (head(column).identifier == identifier) return column;
  }
  return std::nullopt;
}

std::optional<int> TableModel::rowWith(quint64 wanted) const {
  for (int row = 0; wanted != 0 && row < rowCount(); ++row) {
    if (identity(row) == wanted) return row;
  }
  return std::nullopt;
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const ColumnHead& its = head(index.column());
  switch (role) {
    case Qt::EditRole:
      if (edits_.textForEditing) return edits_.textForEditing(its.identifier, index.row());
      [[fallthrough]];
    case Qt::DisplayRole:
      return shownText(index);
    case Qt::TextAlignmentRole:
      return flagsOf(its.alignment);
    case Qt::CheckStateRole:
      if (!isOnOrOff(its.kind)) return {};
      return isChecked(index.row(), index.column()) ? Qt::Checked : Qt::Unchecked;
    case Qt::AccessibleTextRole:
      return accessibleText(index);
    case kWarningRole:
    case Qt::AccessibleDescriptionRole:
      return warning(index.row(), index.column());
    case kKindRole:
      return static_cast<int>(its.kind);
    case kRunningRole:
      return isRunning(index.row());
    case kQuietRole:
      return isQuiet(index.row());
    case kSumRole:
      return isSum(index.row());
    case kSignRole:
      return static_cast<int>(sign(index.row()));
    case kRemarkRole:
      return remark(index.row(), index.column());
    case kGroupRole:
      return static_cast<int>(groupPlace(index.row()));
    case kFollowsRole:
      return follows(index);
    case kIdentityRole:
      return identity(index.row());
    default:
      return {};
  }
}

bool TableModel::follows(const QModelIndex& index) const {
  return following_.identity != 0 && head(index.column()).identifier == following_.column &&
         identity(index.row()) == following_.identity;
}

QString TableModel::shownText(const QModelIndex& index) const {
  return follows(index) ? following_.text : text(index.row(), index.column());
}

void TableModel::setFollowing(Following following) {
  if (following.column.isEmpty()) following = {};
  if (following == following_) return;
  RowRanges changed;
  const auto rowBefore = rowWith(following_.identity);
  const auto row = rowWith(following.identity);
  following_ = std::move(following);
  if (rowBefore) changed.add(*rowBefore);
  if (row && row != rowBefore) changed.add(*row);
  tellChanged(changed);
}

QString TableModel::whyNot(const QModelIndex& index) const {
  const bool asks = edits_.whyNot && index.isValid();
  return asks ? edits_.whyNot(head(index.column()).identifier, index.row()) : QString();
}

CellReading TableModel::read(const QString& text, const QModelIndex& index) const {
  if (!edits_.read || !index.isValid()) return {};
  return edits_.read(text, head(index.column()).identifier, index.row());
}

/// A cell that acts is called by what a press on it does.
QString TableModel::accessibleText(const QModelIndex& index) const {
  const ColumnHead& its = head(index.column());
  if (its.kind == CellKind::StartStop) return isRunning(index.row()) ? tr("Stop") : tr("Start");
  QString shown = shownText(index);
  if (const QString remark = this->remark(index.row(), index.column()); !remark.isEmpty()) {
    return shown.isEmpty() ? remark : remark + u' ' + shown;
  }
  if (isOnOrOff(its.kind) && shown.isEmpty()) {
    return its.accessibleName.isEmpty() ? its.title : its.accessibleName;
  }
  return shown;
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const ColumnHead& its = head(section);
  switch (role) {
    case Qt::DisplayRole:
      return its.title;
    case Qt::AccessibleTextRole:
      return its.accessibleName.isEmpty() ? its.title : its.accessibleName;
    case Qt::TextAlignmentRole:
      return flagsOf(its.alignment);
    default:
      return {};
  }
}

Qt::ItemFlags TableModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  if (isEditable(index.row(), index.column())) flags |= Qt::ItemIsEditable;
  if (head(index.column()).kind == CellKind::Check) flags |= Qt::ItemIsUserCheckable;
  return flags;
}

bool TableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !index.isValid() || !edits_.setValue) return false;
  edits_.setValue(value.toString(), head(index.column()).identifier, index.row());
  return true;
}

bool TableModel::shouldEdit(const QModelIndex& index) const {
  return !edits_.shouldEdit || edits_.shouldEdit(head(index.column()).identifier, index.row());
}

void TableModel::tellChanged(const RowRanges& rows) {
  const auto tell = [this](int first, int last) {
    Q_EMIT dataChanged(index(first, 0), index(last, columnCount() - 1));
  };
  if (rows.areMany()) return tell(0, rowCount() - 1);
  for (const RowRange& range : rows.ranges()) tell(range.first, range.last);
}

void TableModel::movePersistentIndexes(const std::vector<int>& order) {
  std::vector<int> places(order.size());
  for (std::size_t place = 0; place < order.size(); ++place) {
    places[static_cast<std::size_t>(order[place])] = static_cast<int>(place);
  }
  const QModelIndexList from = persistentIndexList();
  QModelIndexList to;
  to.reserve(from.size());
  for (const QModelIndex& one : from) {
    to.push_back(index(places[static_cast<std::size_t>(one.row())], one.column()));
  }
  changePersistentIndexList(from, to);
}

}  // namespace pendra
