#include "ui/TableModel.h"

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

TableModel::TableModel(TableSource& source, QObject* parent) : QAbstractTableModel(parent), source_(source) {}

void TableModel::reloadData() {
  beginResetModel();
  endResetModel();
}

void TableModel::updateRow(int row) {
  if (row < 0 || row >= rowCount()) return;
  Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void TableModel::sortBy(const SortOrder& descriptor) {
  beginResetModel();
  source_.sortBy(descriptor);
  endResetModel();
}

int TableModel::columnOf(QStringView identifier) const {
  for (int column = 0; column < source_.columnCount(); ++column) {
    if (source_.head(column).identifier == identifier) return column;
  }
  return -1;
}

int TableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : source_.rowCount();
}

int TableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : source_.columnCount();
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const ColumnHead& head = source_.head(index.column());
  switch (role) {
    case Qt::EditRole:
      if (edits_.textForEditing) return edits_.textForEditing(head.identifier, index.row());
      [[fallthrough]];
    case Qt::DisplayRole:
      return source_.text(index.row(), index.column());
    case Qt::TextAlignmentRole:
      return flagsOf(head.alignment);
    case Qt::CheckStateRole:
      if (head.kind != CellKind::Check) return {};
      return source_.isChecked(index.row(), index.column()) ? Qt::Checked : Qt::Unchecked;
    case Qt::AccessibleTextRole:
      return accessibleText(index);
    case kWarningRole:
    case Qt::AccessibleDescriptionRole:
      return source_.warning(index.row(), index.column());
    case kKindRole:
      return static_cast<int>(head.kind);
    case kRunningRole:
      return source_.isRunning(index.row());
    case kQuietRole:
      return source_.isQuiet(index.row());
    case kIdentityRole:
      return source_.identity(index.row());
    default:
      return {};
  }
}

/// A cell that acts is called by what a press on it does.
QString TableModel::accessibleText(const QModelIndex& index) const {
  const ColumnHead& head = source_.head(index.column());
  if (head.kind == CellKind::StartStop) return source_.isRunning(index.row()) ? tr("Stop") : tr("Start");
  QString text = source_.text(index.row(), index.column());
  if (head.kind == CellKind::Check && text.isEmpty()) {
    return head.accessibleName.isEmpty() ? head.title : head.accessibleName;
  }
  return text;
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const ColumnHead& head = source_.head(section);
  switch (role) {
    case Qt::DisplayRole:
      return head.title;
    case Qt::AccessibleTextRole:
      return head.accessibleName.isEmpty() ? head.title : head.accessibleName;
    case Qt::TextAlignmentRole:
      return flagsOf(head.alignment);
    default:
      return {};
  }
}

Qt::ItemFlags TableModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  if (source_.isEditable(index.row(), index.column())) flags |= Qt::ItemIsEditable;
  if (source_.head(index.column()).kind == CellKind::Check) flags |= Qt::ItemIsUserCheckable;
  return flags;
}

bool TableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !index.isValid() || !edits_.setValue) return false;
  edits_.setValue(value.toString(), source_.head(index.column()).identifier, index.row());
  return true;
}

bool TableModel::shouldEdit(const QModelIndex& index) const {
  return !edits_.shouldEdit || edits_.shouldEdit(source_.head(index.column()).identifier, index.row());
}

}  // namespace pendra
