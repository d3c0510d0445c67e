#include "ui/SearchField.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "ui/Symbols.h"
#include "ui/Theme.h"

namespace pendra {

namespace {
constexpr auto kSearchesProperty = "pendraSearches";
constexpr int kSign = 14;
constexpr int kRoom = kSign + metrics::kGrid;  // beside the words
}  // namespace

SearchField::SearchField(const QString& name, QWidget* parent) : QLineEdit(parent) {
  markAsSearch(*this);
  setAccessibleName(name);
  setPlaceholderText(name);
  setFont(Theme::controlFont());
  setTextMargins(kRoom, 0, kRoom, 0);
  setMouseTracking(true);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget* from, QWidget* to) {
    if (to != this) return;
    before_ = from;
    Q_EMIT entered();
  });
}

QRect SearchField::crossRect() const {
  QRect cross(0, 0, kSign, kSign);
  cross.moveCenter({width() - kRoom + kSign / 2, height() / 2});
  return cross;
}

bool SearchField::isOnCross(const QPoint& place) const {
  return !text().isEmpty() && place.x() >= crossRect().left() - metrics::kGrid / 2;
}

void SearchField::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  QPainter painter(this);
  const QColor quiet = Theme::colours(palette()).quiet;
  QRect magnifier(metrics::kGrid + 2, 0, kSign, kSign);
  magnifier.moveCenter({magnifier.center().x(), height() / 2});
  drawSymbol(painter, magnifier, Symbol::Search, quiet);
  if (!text().isEmpty()) drawSymbol(painter, crossRect(), Symbol::Cross, quiet);
}

void SearchField::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Escape:
      return text().isEmpty() ? leave() : clear();
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (table_) table_->setFocus(Qt::OtherFocusReason);
      return;
    default:
      return QLineEdit::keyPressEvent(event);
  }
}

void SearchField::leave() {
  QWidget* back = before_ && before_->isVisible() ? before_ : table_;
  if (back) back->setFocus(Qt::OtherFocusReason);
}

void SearchField::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && isOnCross(event->pos())) return clear();
  QLineEdit::mousePressEvent(event);
}

void SearchField::mouseMoveEvent(QMouseEvent* event) {
  setCursor(isOnCross(event->pos()) ? Qt::ArrowCursor : Qt::IBeamCursor);
  QLineEdit::mouseMoveEvent(event);
}

void markAsSearch(QLineEdit& field) { field.setProperty(kSearchesProperty, true); }

QLineEdit* searchFieldIn(const QWidget& window) {
  const auto fields = window.findChildren<QLineEdit*>();
  const auto searches = [](const QLineEdit* field) { return field->property(kSearchesProperty).toBool(); };
  const auto found = std::find_if(fields.begin(), fields.end(), searches);
  return found == fields.end() ? nullptr : *found;
}

void beginSearch(QLineEdit& field) {
  field.setFocus(Qt::ShortcutFocusReason);
  field.selectAll();
}

}  // namespace pendra
