#include "HoursChart.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QPainter>

#include "HoursChartAccessible.h"
#include "ReadOut.h"
#include "ui_core/ReportTexts.h"

namespace pendra {

HoursChart::HoursChart(QWidget* parent) : QWidget(parent) {
  HoursChartAccessible::install();
  setFont(Theme::quietFont());
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
}

void HoursChart::setReport(const Report& report, QDate today, bool hatches) {
  const bool isOther = !(report.query.range == report_.query.range) ||
                       report.query.bars != report_.query.bars || report.bars.size() != report_.bars.size();
  report_ = report;
  today_ = today;
  hatches_ = hatches;
  if (isOther) {
    current_ = -1;
    hovered_ = -1;
    QAccessibleEvent event(this, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&event);
  }
  update();
  Q_EMIT questionChanged();
}

void HoursChart::setEmptyText(const QString& text) {
  emptyText_ = text;
  setAccessibleDescription(text);
}

int HoursChart::barInQuestion() const { return hovered_ >= 0 ? hovered_ : hasFocus() ? current_ : -1; }

void HoursChart::setCurrentBar(int bar) {
  if (bars() == 0) return;
  current_ = std::clamp(bar, 0, bars() - 1);
  hovered_ = -1;
  tellFocus();
  update();
  Q_EMIT questionChanged();
}

void HoursChart::pressBar(int bar) {
  if (bar < 0 || bar >= bars()) return;
  setCurrentBar(bar);
  Q_EMIT barPressed(bar);
}

void HoursChart::tellFocus() {
  if (current_ < 0 || !hasFocus()) return;
  QAccessibleEvent event(this, QAccessible::Focus);
  event.setChild(current_);
  QAccessible::updateAccessibility(&event);
}

HoursPainter HoursChart::painterOfBars() const {
  return {report_,
          {.colours = &Theme::colours(palette()),
           .font = font(),
           .locale = locale(),
           .today = today_,
           .hatches = hatches_,
           .marked = barInQuestion(),
           .focused = hasFocus() ? current_ : -1},
          QRectF(rect())};
}

QRect HoursChart::columnOf(int bar) const { return painterOfBars().columnOf(bar).toAlignedRect(); }

int HoursChart::barAt(const QPoint& point) const { return painterOfBars().barAt(point); }

QString HoursChart::nameOf(int bar) const {
  return titleOf(report_.bars.at(static_cast<std::size_t>(bar)), locale());
}

QString HoursChart::descriptionOf(int bar) const {
  ReadOutParts parts = readOutOf(report_, bar, locale(), hatches_);
  parts.front().words.clear();
  return textOf(parts);
}

void HoursChart::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painterOfBars().paint(painter);
  if (emptyText_.isEmpty()) return;
  painter.setFont(Theme::cellFont());
  const QRect place = rect().adjusted(0, 0, 0, -rect().height() / 4);
  const QRect words = painter.boundingRect(place, Qt::AlignCenter, emptyText_);
  const Colours& colours = Theme::colours(palette());
  painter.fillRect(words.adjusted(-metrics::kGrid, -2, metrics::kGrid, 2), colours.base);  // over the lines
  painter.setPen(colours.quiet);
  painter.drawText(place, Qt::AlignCenter, emptyText_);
}

void HoursChart::keyPressEvent(QKeyEvent* event) {
  const int keyboardAt = current_;
  switch (event->modifiers() & ~Qt::KeypadModifier ? Qt::Key_unknown : event->key()) {
    case Qt::Key_Left:
      return setCurrentBar(keyboardAt < 0 ? bars() - 1 : keyboardAt - 1);
    case Qt::Key_Right:
      return setCurrentBar(keyboardAt + 1);
    case Qt::Key_Home:
      return setCurrentBar(0);
    case Qt::Key_End:
      return setCurrentBar(bars() - 1);
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      return pressBar(current_);
    default:
      QWidget::keyPressEvent(event);
  }
}

void HoursChart::setHovered(int bar) {
  if (bar == hovered_) return;
  hovered_ = bar;
  setCursor(bar >= 0 ? Qt::PointingHandCursor : Qt::ArrowCursor);
  update();
  Q_EMIT questionChanged();
}

void HoursChart::mouseMoveEvent(QMouseEvent* event) { setHovered(barAt(event->pos())); }

void HoursChart::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && rect().contains(event->pos())) pressBar(barAt(event->pos()));
}

void HoursChart::leaveEvent(QEvent*) { setHovered(-1); }

void HoursChart::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  const bool byKey = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ||
                     event->reason() == Qt::ShortcutFocusReason;
  if (current_ < 0 && byKey) return setCurrentBar(0);
  update();
  Q_EMIT questionChanged();
}

void HoursChart::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
  Q_EMIT questionChanged();
}

}  // namespace pendra
