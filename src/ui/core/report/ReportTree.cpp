#include "ui_core/ReportTree.h"

#include "platform/Translation.h"
#include "ui_core/ReportTexts.h"

namespace pendra {

namespace {

/// Whether both have the same rows in the same order, whatever their figures are.
bool haveSameShape(const ReportRow& one, const ReportRow& other) {
  return one.name == other.name && one.start == other.start && one.isFilled == other.isFilled &&
         std::equal(one.rows.begin(), one.rows.end(), other.rows.begin(), other.rows.end(),
                    [](const auto& a, const auto& b) { return haveSameShape(*a, *b); });
}

/// Puts what `from` shows into the rows of `to`, which stay where they are.
void takeOver(ReportRow& to, ReportRow& from) {
  to.notes = from.notes;
  to.hours = from.hours;
  to.group = from.group;
  to.place = from.place;
  for (std::size_t at = 0; at < to.rows.size(); ++at) takeOver(*to.rows[at], *from.rows[at]);
}

Length lengthIn(const Hours& hours, int column) {
  switch (column) {
    case ReportTree::Billable:
      return hours.billable;
    case ReportTree::Sent:
      return hours.sent;
    case ReportTree::NotSent:
      return hours.notSent();
    default:
      return hours.total;
  }
}

}  // namespace

void ReportTree::setReport(Report report, EntriesOf entriesOf) {
  const bool groupsOtherwise = report.query.by != report_.query.by;
  // The rows that are shown point into the old report until they are replaced.
  Report old = std::exchange(report_, std::move(report));
  entriesOf_ = std::move(entriesOf);
  ReportRow next;
  next.hours = report_.all;
  addGroups(next, report_.groups);
  fillAs(root_, next);
  if (!groupsOtherwise && haveSameShape(root_, next)) {
    takeOver(root_, next);
    return tellChanged({});
  }
  beginResetModel();
  root_ = std::move(next);
  for (const auto& row : root_.rows) row->parent = &root_;
  endResetModel();
}

void ReportTree::addGroups(ReportRow& parent, const std::vector<ReportGroup>& groups) const {
  for (const ReportGroup& group : groups) {
    auto row = std::make_unique<ReportRow>(ReportRow{.name = titleOf(group), .hours = group.hours});
    row->group = &group;
    row->parent = &parent;
    row->place = parent.parent || parent.group ? parent.place : parent.rows.size();
    addGroups(*row, group.groups);
    row->isFilled = !group.groups.empty();
    parent.rows.push_back(std::move(row));
  }
  sortRows(parent.rows);
}

std::vector<std::unique_ptr<ReportRow>> ReportTree::entriesFor(ReportRow& parent) const {
  std::vector<std::unique_ptr<ReportRow>> rows;
  for (const ReportEntry& entry : entriesOf_(*parent.group)) {
    const QDateTime local = calendar_.local(entry.start);
    const QString name = locale_.toString(local.date(), QStringLiteral("ddd d MMM")) + u", " +
                         locale_.toString(local.time(), QLocale::ShortFormat);
    auto row = std::make_unique<ReportRow>(
        ReportRow{.name = name, .notes = entry.notes, .hours = entry.hours, .start = entry.start});
    row->parent = &parent;
    row->place = parent.place;
    rows.push_back(std::move(row));
  }
  sortRows(rows);
  return rows;
}

void ReportTree::fillAs(const ReportRow& old, ReportRow& row) const {
  if (!row.isFilled && old.isFilled) {
    row.rows = entriesFor(row);
    row.isFilled = true;
  }
  for (const auto& child : row.rows) {
    const auto same = std::find_if(old.rows.begin(), old.rows.end(),
                                   [&](const auto& one) { return one->name == child->name; });
    if (same != old.rows.end() && child->group) fillAs(**same, *child);
  }
}

void ReportTree::sortRows(std::vector<std::unique_ptr<ReportRow>>& rows) const {
  const auto before = [this](const ReportRow& one, const ReportRow& other) {
    if (sortColumn_ == Name) {
      if (one.start) return one.start < other.start;
      return one.name.compare(other.name, Qt::CaseInsensitive) < 0;
    }
    if (sortColumn_ == Entries) return one.hours.entries < other.hours.entries;
    return lengthIn(one.hours, sortColumn_) < lengthIn(other.hours, sortColumn_);
  };
  std::stable_sort(rows.begin(), rows.end(), [&](const auto& one, const auto& other) {
    // Entries stand by time, the latest first, whatever figures the groups are sorted by.
    if (one->start && sortColumn_ != Name) return *one->start > *other->start;
    return order_ == Qt::AscendingOrder ? before(*one, *other) : before(*other, *one);
  });
}

const ReportRow& ReportTree::row(const QModelIndex& index) const {
  return index.isValid() ? *static_cast<const ReportRow*>(index.constInternalPointer()) : root_;
}

QString ReportTree::pathOf(const ReportRow& row) {
  return row.parent ? QString(pathOf(*row.parent) + u'\n' + row.name) : QString();
}

QString ReportTree::text(const ReportRow& row, int column) const {
  if (column == Name) return row.name;
  if (column == Entries) return row.start ? QString() : locale_.toString(row.hours.entries);
  return lengthOrDash(lengthIn(row.hours, column));
}

QModelIndex ReportTree::index(int row, int column, const QModelIndex& parent) const {
  const auto& rows = this->row(parent).rows;
  if (row < 0 || column < 0 || column >= kColumns || row >= static_cast<int>(rows.size())) return {};
  return createIndex(row, column, rows[static_cast<std::size_t>(row)].get());
}

QModelIndex ReportTree::parent(const QModelIndex& index) const {
  const ReportRow* above = index.isValid() ? row(index).parent : nullptr;
  if (!above || above == &root_) return {};
  const auto& siblings = above->parent->rows;
  const auto place =
      std::find_if(siblings.begin(), siblings.end(), [above](const auto& one) { return one.get() == above; });
  return createIndex(static_cast<int>(place - siblings.begin()), 0, above);
}

int ReportTree::rowCount(const QModelIndex& parent) const {
  return parent.column() > 0 ? 0 : static_cast<int>(row(parent).rows.size());
}

QVariant ReportTree::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const ReportRow& shown = row(index);
  switch (role) {
    case Qt::DisplayRole:
      return text(shown, index.column());
    case Qt::AccessibleTextRole:
      if (index.column() != Name || shown.notes.isEmpty()) return text(shown, index.column());
      return QString(shown.name + u' ' + shown.notes);
    case Qt::TextAlignmentRole:
      return int(Qt::AlignVCenter | (index.column() == Name ? Qt::AlignLeft : Qt::AlignRight));
    case kNotesRole:
      return shown.notes;
    default:
      return {};
  }
}

QVariant ReportTree::headerData(int section, Qt::Orientation orientation, int role) const {
  const bool isAsked = role == Qt::DisplayRole || role == Qt::AccessibleTextRole;
  if (orientation != Qt::Horizontal || !isAsked) return {};
  const std::array heads{role == Qt::DisplayRole ? headOf(report_.query.by) : pendra::tr("Name"),
                         pendra::tr("Entries"),
                         pendra::tr("Billable"),
                         pendra::tr("Sent"),
                         pendra::tr("Not sent"),
                         pendra::tr("Total")};
  return heads[static_cast<std::size_t>(section)];
}

bool ReportTree::hasChildren(const QModelIndex& parent) const {
  return parent.column() <= 0 && (!row(parent).isFilled || !row(parent).rows.empty());
}

bool ReportTree::canFetchMore(const QModelIndex& parent) const { return !row(parent).isFilled; }

void ReportTree::fetchMore(const QModelIndex& parent) {
  if (!canFetchMore(parent)) return;
  auto& filled = *static_cast<ReportRow*>(parent.internalPointer());
  auto rows = entriesFor(filled);
  filled.isFilled = true;
  if (rows.empty()) return;
  beginInsertRows(parent, 0, static_cast<int>(rows.size()) - 1);
  filled.rows = std::move(rows);
  endInsertRows();
}

void ReportTree::sort(int column, Qt::SortOrder order) {
  sortColumn_ = column;
  order_ = order;
  const std::function<void(ReportRow&)> sortAll = [&](ReportRow& parent) {
    sortRows(parent.rows);
    for (const auto& child : parent.rows) sortAll(*child);
  };
  Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
  const QModelIndexList before = persistentIndexList();
  sortAll(root_);
  QModelIndexList after;
  for (const QModelIndex& old : before) {
    const auto& siblings = row(old).parent->rows;
    const auto place = std::find_if(siblings.begin(), siblings.end(),
                                    [&](const auto& one) { return one.get() == &row(old); });
    after << createIndex(static_cast<int>(place - siblings.begin()), old.column(), old.internalPointer());
  }
  changePersistentIndexList(before, after);
  Q_EMIT layoutChanged({}, VerticalSortHint);
}

void ReportTree::tellChanged(const QModelIndex& parent) {
  const int rows = rowCount(parent);
  if (rows == 0) return;
  Q_EMIT dataChanged(index(0, 0, parent), index(rows - 1, kColumns - 1, parent));
  for (int at = 0; at < rows; ++at) tellChanged(index(at, 0, parent));
}

}  // namespace pendra
