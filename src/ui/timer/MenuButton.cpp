#include "MenuButton.h"

#include <QKeyEvent>
#include <QPainter>

#include "ui/Buttons.h"
#include "ui/Symbols.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kArrow = 24;
constexpr int kBeforeWords = 4;

}  // namespace

MenuButton::MenuButton(const QString& objectName, const QString& accessibleName) {
  setObjectName(objectName);
  setAccessibleName(accessibleName);
  setFont(Theme::quietFont());
  setFocusPolicy(Qt::TabFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize MenuButton::sizeHint() const {
  const int words = text().isEmpty() ? 0 : kBeforeWords + fontMetrics().horizontalAdvance(text());
  return {words + kArrow, std::max(kArrow, fontMetrics().height() + metrics::kGrid)};
}

void MenuButton::paintEvent(QPaintEvent*) {
  const Colours& colours = Theme::colours(palette());
  QPainter painter(this);
  drawPlate(painter, *this);
  painter.setPen(isEnabled() ? colours.quiet : colours.disabled);
  painter.drawText(rect().adjusted(kBeforeWords, 0, -kArrow, 0), Qt::AlignLeft | Qt::AlignVCenter, text());
  drawChevron(painter, {width() - kArrow / 2.0, height() / 2.0}, painter.pen().color());
}

void MenuButton::keyPressEvent(QKeyEvent* event) {
  const bool opens = event->key() == Qt::Key_Down || event->key() == Qt::Key_Return;
  if (opens) return click();
  QAbstractButton::keyPressEvent(event);
}

}  // namespace pendra
