#include "ReportTable.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include "../RowHeader.h"
#include "HoursPainter.h"
#include "ui/OneLine.h"
#include "ui/TabularText.h"
#include "ui_core/ReportTexts.h"

namespace pendra {

namespace {

constexpr int kIndent = 28;
constexpr int kArrowRoom = 10;
constexpr int kFiguresWidth = 104;
constexpr int kCountWidth = 84;
constexpr int kShareWidth = 180;  // of the bar right of the totals
constexpr int kShareGap = 24;
constexpr int kShareHeight = 11;
constexpr double kSwatch = 10;
constexpr int kNameAfterSwatch = 18;
constexpr double kRoomForShares = 900;

/// Where a cell's figures stand: the totals have a bar at their right where there is room for one.
QRect figuresRect(const QRect& cell, int column, bool hasShares) {
  const int right = column != ReportTree::Total ? 0 : hasShares ? kShareWidth : metrics::kSide;
  return cell.adjusted(0, 0, -right, 0);
}

bool hasShares(const QWidget& table) { return table.width() >= kRoomForShares; }

class ReportHeader final : public QHeaderView {
 public:
  explicit ReportHeader(ReportTable& table) : QHeaderView(Qt::Horizontal, &table), table_(table) {
    setFont(Theme::quietFont());
    setSectionsClickable(true);
    setSectionsMovable(false);
    setMinimumSectionSize(metrics::kRowHeight);
    setStretchLastSection(false);
    setSectionResizeMode(QHeaderView::Fixed);
  }
  [[nodiscard]] QSize sizeHint() const override {
    return {QHeaderView::sizeHint().width(), std::max(metrics::kHeadHeight, fontMetrics().height() + 10)};
  }

 protected:
  void paintSection(QPainter* painter, const QRect& rect, int section) const override {
    const Colours& colours = Theme::colours(palette());
    painter->save();
    drawHeadGround(*painter, rect, colours);
    QFont heavy = font();
    heavy.setWeight(QFont::Medium);
    painter->setFont(heavy);
    painter->setPen(colours.quiet);
    const bool isName = section == ReportTree::Name;
    const bool sorts = sortIndicatorSection() == section;
    drawHead(*painter,
             isName ? rect.adjusted(kIndent + kNameAfterSwatch, 0, 0, 0)
                    : figuresRect(rect, section, hasShares(table_)),
             {.title = model()->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString(),
              .alignment = isName ? Alignment::Left : Alignment::Right,
              .ascending = sorts ? std::optional(sortIndicatorOrder() == Qt::AscendingOrder) : std::nullopt});
    painter->restore();
  }

 private:
  const ReportTable& table_;
};

class ReportDelegate final : public QStyledItemDelegate {
 public:
  explicit ReportDelegate(ReportTable& table) : QStyledItemDelegate(&table), table_(table) {}

  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
    return {0, std::max(metrics::kRowHeight, QFontMetrics(Theme::cellFont()).height() + metrics::kGrid)};
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const ReportRow& row = table_.tree().row(index);
    const Colours& colours = Theme::colours(option.palette);
    const bool selected = option.state & QStyle::State_Selected;
    const bool isTop = !index.parent().isValid();
    painter->save();
    painter->setFont(Theme::cellFont());
    if (index.column() == ReportTree::Name) {
      paintName(*painter, option.rect, row, isTop, colours, selected);
    } else {
      paintFigures(*painter, option.rect, index, isTop, selected ? colours.text : colours.quiet,
                   colours.text);
      if (isTop && index.column() == ReportTree::Total) paintShares(*painter, option.rect, row, colours);
    }
    painter->restore();
  }

 private:
  void paintName(QPainter& painter, QRect rect, const ReportRow& row, bool isTop, const Colours& colours,
                 bool selected) const {
    if (isTop) {
      QRectF swatch(rect.left(), 0, kSwatch, kSwatch);
      swatch.moveTop(rect.center().y() - kSwatch / 2);
      painter.setRenderHint(QPainter::Antialiasing);
      painter.setPen(Qt::NoPen);
      painter.setBrush(colourOfGroup(colours, row.place));
      painter.drawRoundedRect(swatch, 2, 2);
      rect.setLeft(rect.left() + kNameAfterSwatch);
      QFont font = painter.font();
      if (selected) font.setWeight(QFont::DemiBold);
      painter.setFont(font);
    }
    rect.setRight(rect.right() - metrics::kGrid);
    const QString name = painter.fontMetrics().elidedText(row.name, Qt::ElideRight, rect.width());
    painter.setPen(colours.text);
    painter.drawText(rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, name);
    rect.setLeft(rect.left() + painter.fontMetrics().horizontalAdvance(name) + metrics::kGrid);
    if (row.notes.isEmpty() || rect.width() < kIndent) return;
    painter.setPen(selected ? colours.text : colours.quiet);
    painter.drawText(rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     oneLine(row.notes, painter.fontMetrics(), rect.width()));
  }

  void paintFigures(QPainter& painter, const QRect& rect, const QModelIndex& index, bool isTop,
                    const QColor& quiet, const QColor& text) const {
    const bool isCount = index.column() == ReportTree::Entries;
    const QString figures = index.data().toString();
    QFont font = painter.font();
    if (isTop && index.column() == ReportTree::Total) font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.setPen(isCount || figures == u"-" ? quiet : text);
    drawTabular(painter, figuresRect(rect, index.column(), hasShares(table_)), Qt::AlignRight, figures);
  }

  /// How long a group is beside the longest one, and what of it was sent.
  void paintShares(QPainter& painter, const QRect& rect, const ReportRow& row, const Colours& colours) const {
    const auto& groups = table_.tree().report().groups;
    const double longest = groups.empty() ? 0 : secondsOf(groups.front().hours.total);
    if (!hasShares(table_) || longest <= 0) return;
    const QRectF place(rect.right() - kShareWidth + kShareGap, rect.center().y() - kShareHeight / 2.0 + 0.5,
                       kShareWidth - kShareGap - 2 * metrics::kSide, kShareHeight);
    Shares shares{secondsOf(row.hours.sent), secondsOf(row.hours.notSent())};
    if (!table_.isLinked()) shares = {secondsOf(row.hours.total), 0};
    drawShares(painter, place.toRect(), shares, place.width() / longest, colourOfGroup(colours, row.place));
  }

  const ReportTable& table_;
};

}  // namespace

ReportTable::ReportTable(ReportTree& tree, QWidget* parent) : QTreeView(parent), tree_(tree) {
  setModel(&tree);
  setHeader(new ReportHeader(*this));
  new HeadCorner(*header(), *this);
  setItemDelegate(new ReportDelegate(*this));
  setIndentation(kIndent);
  setUniformRowHeights(true);
  setFrameShape(QFrame::NoFrame);
  setAllColumnsShowFocus(true);
  setMouseTracking(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setSortingEnabled(true);
  header()->setSortIndicator(ReportTree::Total, Qt::DescendingOrder);
  connect(&tree, &QAbstractItemModel::modelAboutToBeReset, this, &ReportTable::keepUnfolded);
  connect(&tree, &QAbstractItemModel::modelReset, this, [this] {
    unfoldAgain({});
    placeColumns();
  });
  placeColumns();
}

void ReportTable::setLinked(bool linked) {
  linked_ = linked;
  setColumnHidden(ReportTree::Sent, !linked);
  setColumnHidden(ReportTree::NotSent, !linked);
  placeColumns();
  viewport()->update();
}

void ReportTable::placeColumns() {
  int rest = viewport()->width();
  for (int column = ReportTree::Entries; column < ReportTree::kColumns; ++column) {
    int width = column == ReportTree::Entries ? kCountWidth : kFiguresWidth;
    if (column == ReportTree::Total)
      width = kFiguresWidth + 8 + (hasShares(*this) ? kShareWidth : metrics::kSide);
    header()->resizeSection(column, width);
    if (!isColumnHidden(column)) rest -= width;
  }
  header()->resizeSection(ReportTree::Name, std::max(rest, 3 * metrics::kRowHeight));
}

void ReportTable::resizeEvent(QResizeEvent* event) {
  QTreeView::resizeEvent(event);
  placeColumns();
}

void ReportTable::keepUnfolded() {
  unfolded_.clear();
  const std::function<void(const QModelIndex&)> keep = [&](const QModelIndex& parent) {
    for (int at = 0; at < tree_.rowCount(parent); ++at) {
      const QModelIndex index = tree_.index(at, 0, parent);
      if (!isExpanded(index)) continue;
      unfolded_ << ReportTree::pathOf(tree_.row(index));
      keep(index);
    }
  };
  keep({});
  current_ = currentIndex().isValid() ? ReportTree::pathOf(tree_.row(currentIndex())) : QString();
}

void ReportTable::unfoldAgain(const QModelIndex& parent) {
  for (int at = 0; at < tree_.rowCount(parent); ++at) {
    const QModelIndex index = tree_.index(at, 0, parent);
    const QString path = ReportTree::pathOf(tree_.row(index));
    if (path == current_) setCurrentIndex(index);
    if (!unfolded_.contains(path)) continue;
    expand(index);
    unfoldAgain(index);
  }
}

std::vector<ReportTable::Shown> ReportTable::shownRows() const {
  std::vector<Shown> shown;
  const std::function<void(const QModelIndex&, int)> add = [&](const QModelIndex& parent, int depth) {
    for (int at = 0; at < tree_.rowCount(parent); ++at) {
      const QModelIndex index = tree_.index(at, 0, parent);
      shown.push_back({&tree_.row(index), depth});
      if (!isExpanded(index)) continue;
      if (tree_.canFetchMore(index)) tree_.fetchMore(index);
      add(index, depth + 1);
    }
  };
  add({}, 0);
  return shown;
}

void ReportTable::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const {
  if (!tree_.hasChildren(index)) return;
  const Colours& colours = Theme::colours(palette());
  const QPointF middle(rect.right() - kArrowRoom, QRectF(rect).center().y());
  const QPolygonF down{middle + QPointF(-4, -2.5), middle + QPointF(4, -2.5), middle + QPointF(0, 2.5)};
  const QPolygonF right{middle + QPointF(-2.5, -4), middle + QPointF(-2.5, 4), middle + QPointF(2.5, 0)};
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(Qt::NoPen);
  painter->setBrush(colours.quiet);
  painter->drawPolygon(isExpanded(index) ? down : right);
  painter->restore();
}

void ReportTable::drawRow(QPainter* painter, const QStyleOptionViewItem& options,
                          const QModelIndex& index) const {
  const Colours& colours = Theme::colours(palette());
  const QRect row(0, options.rect.top(), viewport()->width(), options.rect.height());
  const bool selected = selectionModel()->isRowSelected(index.row(), index.parent());
  const bool hovered = options.state & QStyle::State_MouseOver;
  const QColor ground = selected  ? (isActiveWindow() ? colours.selection : colours.line)
                        : hovered ? colours.hover
                                  : colours.base;
  painter->fillRect(row, ground);
  QStyleOptionViewItem asGround = options;
  asGround.palette.setColor(QPalette::Highlight, ground);  // for what is left of the arrow
  QTreeView::drawRow(painter, asGround, index);
  painter->fillRect(QRect(0, row.bottom(), row.width(), 1), colours.line);
  if (selected && hasFocus() && isActiveWindow())
    painter->fillRect(QRect(0, row.top(), 2, row.height()), colours.link);
}

void ReportTable::mouseMoveEvent(QMouseEvent* event) {
  QTreeView::mouseMoveEvent(event);
  viewport()->update();
}

void ReportTable::leaveEvent(QEvent* event) {
  QTreeView::leaveEvent(event);
  viewport()->update();
}

ReportSumRow::ReportSumRow(ReportTable& table) : table_(table) {
  setObjectName(QStringLiteral("reportSumRow"));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setAccessibleName(tr("All"));
  const auto show = [this] {
    const ReportTree& tree = table_.tree();
    QStringList texts;
    for (int column = ReportTree::Entries; column < ReportTree::kColumns; ++column) {
      if (table_.isColumnHidden(column)) continue;
      const QString head = tree.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
      texts << head + u' ' + tree.text(tree.row({}), column);
    }
    setAccessibleDescription(texts.join(QStringLiteral(", ")));
    update();
  };
  connect(&table.tree(), &QAbstractItemModel::modelReset, this, show);
  connect(&table.tree(), &QAbstractItemModel::dataChanged, this, show);
  connect(table.header(), &QHeaderView::sectionResized, this, show);
  show();
}

QSize ReportSumRow::sizeHint() const {
  return {200, std::max(metrics::kRowHeight, QFontMetrics(Theme::cellFont()).height() + metrics::kGrid)};
}

void ReportSumRow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Colours& colours = Theme::colours(palette());
  painter.fillRect(rect(), colours.base);
  painter.fillRect(QRect(0, 0, width(), 1), mixed(colours.line, colours.quiet, 0.4));
  const QFont plain = Theme::cellFont();
  QFont heavy = plain;
  heavy.setWeight(QFont::DemiBold);
  painter.setPen(colours.text);
  painter.setFont(heavy);
  painter.drawText(rect().adjusted(kIndent + kNameAfterSwatch, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
                   tr("All"));
  const ReportTree& tree = table_.tree();
  for (int column = ReportTree::Entries; column < ReportTree::kColumns; ++column) {
    if (table_.isColumnHidden(column)) continue;
    const QRect cell(table_.header()->sectionViewportPosition(column), 0,
                     table_.header()->sectionSize(column), height());
    painter.setFont(column == ReportTree::Total ? heavy : plain);
    painter.setPen(column == ReportTree::Entries ? colours.quiet : colours.text);
    drawTabular(painter, figuresRect(cell, column, hasShares(table_)), Qt::AlignRight,
                tree.text(tree.row({}), column));
  }
}

}  // namespace pendra
