#include "ColumnWidths.h"

#include <QHeaderView>
#include <algorithm>
#include <map>
#include <numeric>
#include <utility>

#include "RowDelegate.h"
#include "RowHeader.h"
#include "ui/Grid.h"
#include "ui/RowTableView.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kNarrowest = 56;

/// Where a column begins whose content stands at its place.
int beginOf(grid::Place place, int tableWidth) {
  if (place == grid::Place::Sign) return 0;
  const int padding = place == grid::Place::Star ? grid::kBeforeStar : metrics::kCellPadding;
  return grid::startOf(place, tableWidth) - padding;
}

}  // namespace

void ColumnWidths::followTable() {
  weights_.clear();
  measured_.assign(static_cast<std::size_t>(view_.tableModel().columnCount()), {});
  for (int column = 0; column < view_.tableModel().columnCount(); ++column) {
    weights_.push_back(view_.tableModel().head(column).weight);
    // What has the width of its content would come back to it at the next reset.
    if (hasOwnWidth(column)) view_.horizontalHeader()->setSectionResizeMode(column, QHeaderView::Fixed);
  }
}

bool ColumnWidths::hasOwnWidth(int column) const { return weights_[static_cast<std::size_t>(column)] <= 0; }

void ColumnWidths::showColumns() {
  const TableModel& model = view_.tableModel();
  distributing_ = true;  // a column that goes is not one that was dragged to nothing
  for (int column = 0; column < model.columnCount(); ++column) {
    view_.setColumnHidden(column, model.isHidden(model.head(column).identifier));
  }
  distribute();
}

void ColumnWidths::distribute() {
  distributing_ = true;
  if (onGrid_) {
    distributeOnGrid();
  } else {
    distributeByWeight();
  }
  distributing_ = false;
}

QStringList ColumnWidths::widestTexts(int column) const {
  const TableModel& model = view_.tableModel();
  const ColumnHead& head = model.head(column);
  const bool isTime = head.kind == CellKind::Time || head.kind == CellKind::SecondaryTime;
  if (!head.widest.isEmpty()) return QStringList(head.title) + head.widest;
  return {head.title, isTime ? QString() : model.text(0, column)};
}

int ColumnWidths::measure(int column, const QStringList& texts) const {
  const CellKind kind = view_.tableModel().head(column).kind;
  int content = static_cast<RowHeader*>(view_.horizontalHeader())->naturalWidth(column);
  for (qsizetype text = 1; text < texts.size(); ++text) {
    content = std::max(content, RowDelegate::naturalWidth(kind, texts[text], view_.font()));
  }
  return content;
}

int ColumnWidths::contentWidth(int column) {
  const QStringList texts = widestTexts(column);
  Measured& measured = measured_[static_cast<std::size_t>(column)];
  if (measured.texts != texts || measured.font != view_.font()) {
    measured = {texts, view_.font(), measure(column, texts)};
  }
  return measured.width + 100 - view_.contentRect(QRect(0, 0, 100, 100), column).width();
}

void ColumnWidths::distributeByWeight() {
  int left = view_.viewport()->width();
  double weight = std::accumulate(weights_.begin(), weights_.end(), 0.0);
  for (int column = 0; column < view_.tableModel().columnCount(); ++column) {
    if (!hasOwnWidth(column)) continue;
    view_.setColumnWidth(column, contentWidth(column));
    left -= view_.columnWidth(column);
  }
  // Each column takes its part of what the ones before it have left, so that nothing is lost to rounding.
  for (int column = 0; column < view_.tableModel().columnCount(); ++column) {
    const double own = weights_[static_cast<std::size_t>(column)];
    if (own <= 0) continue;
    view_.setColumnWidth(column, std::max(kNarrowest, static_cast<int>(left * own / weight)));
    left -= view_.columnWidth(column);
    weight -= own;
  }
}

int ColumnWidths::gridWidth(int column) {
  const TableModel& model = view_.tableModel();
  const auto place = grid::placeOf(model.head(column).identifier);
  if (!place) return contentWidth(column);
  if (const auto byHand = byHand_.constFind(model.head(column).identifier); byHand != byHand_.cend()) {
    return *byHand;
  }
  if (*place == grid::Place::Notes) return kNarrowest;
  // As far as where the next place begins that this table has.
  auto next = static_cast<int>(*place) + 1;
  const bool hasStar = model.columnOf(u"favourite").has_value();
  if (next == static_cast<int>(grid::Place::Star) && !hasStar) ++next;
  return beginOf(static_cast<grid::Place>(next), view_.width()) - beginOf(*place, view_.width());
}

int ColumnWidths::flexibleColumn() const {
  const TableModel& model = view_.tableModel();
  for (const char16_t* identifier : {u"notes", u"service", u"job"}) {
    const auto column = model.columnOf(identifier);
    if (column && !view_.isColumnHidden(*column)) return *column;
  }
  return model.columnOf(u"customer").value_or(0);
}

void ColumnWidths::distributeOnGrid() {
  const int flexible = flexibleColumn();
  int left = view_.viewport()->width();
  for (int column = 0; column < view_.tableModel().columnCount(); ++column) {
    if (view_.isColumnHidden(column)) continue;
    view_.setColumnWidth(column, gridWidth(column));
    left -= view_.columnWidth(column);
  }
  if (left > 0) view_.setColumnWidth(flexible, view_.columnWidth(flexible) + left);
  if (left < 0) squeeze(-left);
}

/// The widest columns give way, down to a width that they have in common.
void ColumnWidths::squeeze(int excess) {
  std::map<int, int> widths;
  int widest = 0;
  for (int column = 0; column < view_.tableModel().columnCount(); ++column) {
    if (hasOwnWidth(column) || view_.isColumnHidden(column)) continue;
    widest = std::max(widest, widths[column] = view_.columnWidth(column));
  }
  for (; excess > 0 && widest > kNarrowest; --widest) {
    for (auto& [column, width] : widths) {
      if (width != widest || excess == 0) continue;
      --width;
      --excess;
    }
  }
  for (const auto& [column, width] : widths) view_.setColumnWidth(column, width);
}

bool ColumnWidths::keepDragged(int section, int width) {
  if (distributing_ || hasOwnWidth(section)) return false;
  if (onGrid_) {
    if (section != flexibleColumn())
      byHand_[view_.tableModel().head(section).identifier] = std::max(width, kNarrowest);
    distribute();
    return true;
  }
  for (int column = 0; column < view_.tableModel().columnCount(); ++column) {
    double& weight = weights_[static_cast<std::size_t>(column)];
    if (weight > 0) weight = column == section ? width : view_.columnWidth(column);
  }
  return false;
}

}  // namespace pendra
