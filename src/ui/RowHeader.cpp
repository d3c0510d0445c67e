#include "RowHeader.h"

#include <QPainter>
#include <cmath>

#include "ui/RowTableView.h"
#include "ui/Theme.h"
#include "ui_core/TableModel.h"

namespace pendra {

namespace {

constexpr int kSignWidth = 8;
constexpr int kSignGap = 4;

void drawSortSign(QPainter& painter, const QPointF& middle, bool ascending, const QColor& colour) {
  const qreal tip = ascending ? -2.5 : 2.5;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.drawPolygon(
      QPolygonF{middle + QPointF(-4, -tip), middle + QPointF(4, -tip), middle + QPointF(0, tip)});
}

}  // namespace

void drawHead(QPainter& painter, const QRect& content, const HeadWords& head) {
  const bool sorted = head.ascending && !head.title.isEmpty();
  const int sign = sorted ? kSignGap + kSignWidth : 0;
  const QString title = painter.fontMetrics().elidedText(head.title, Qt::ElideRight, content.width() - sign);
  const int width = painter.fontMetrics().horizontalAdvance(title) + sign;
  int left = content.left();
  if (head.alignment == Alignment::Right) left += content.width() - width;
  if (head.alignment == Alignment::Center) left += (content.width() - width) / 2;
  painter.drawText(QRect(left, content.top(), width, content.height()), Qt::AlignLeft | Qt::AlignVCenter,
                   title);
  if (!sorted) return;
  const QPointF middle(left + width - kSignWidth / 2, QRectF(content).center().y() + 0.5);
  drawSortSign(painter, middle, *head.ascending, painter.pen().color());
}

void drawHeadGround(QPainter& painter, const QRect& rect, const Colours& colours) {
  painter.fillRect(rect, colours.window);
  painter.fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), colours.line);
}

HeadCorner::HeadCorner(const QHeaderView& heads, QAbstractScrollArea& table) : heads_(heads) {
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  table.addScrollBarWidget(this, Qt::AlignTop);
}

QSize HeadCorner::sizeHint() const { return {0, heads_.sizeHint().height()}; }

void HeadCorner::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  drawHeadGround(painter, rect(), Theme::colours(palette()));
}

RowHeader::RowHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
  setSectionsClickable(true);
  setHighlightSections(false);
  setSectionResizeMode(QHeaderView::Interactive);
  setMinimumSectionSize(metrics::kGrid);
  setFont(Theme::quietFont());
}

const TableModel* RowHeader::tableModel() const { return dynamic_cast<const TableModel*>(model()); }

int RowHeader::naturalWidth(int section) const {
  const QString title = model()->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString();
  if (title.isEmpty()) return 0;
  // Rounded up: half a point too few would cut the last letters.
  return static_cast<int>(std::ceil(QFontMetricsF(headFont()).horizontalAdvance(title))) + 1 + kSignGap +
         kSignWidth;
}

QSize RowHeader::sizeHint() const {
  return {QHeaderView::sizeHint().width(), std::max(metrics::kHeadHeight, fontMetrics().height() + 10)};
}

void RowHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
  if (!tableModel() || !rect.isValid()) return;
  const TableModel& table = *tableModel();
  const Colours& colours = Theme::colours(palette());
  painter->save();
  drawHeadGround(*painter, rect, colours);
  painter->setFont(headFont());
  painter->setPen(colours.quiet);
  const ColumnHead& head = table.head(section);
  const SortOrder& order = table.sortOrder();
  const bool sorts = head.sortable && order.key == head.identifier;
  drawHead(*painter, static_cast<const RowTableView*>(parent())->contentRect(rect, section),
           {.title = head.title,
            .alignment = head.alignment,
            .ascending = sorts ? std::optional(order.ascending) : std::nullopt});
  painter->restore();
}

QFont RowHeader::headFont() const {
  QFont font = this->font();
  font.setWeight(QFont::Medium);
  return font;
}

}  // namespace pendra
