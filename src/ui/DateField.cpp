#include "ui/DateField.h"

#include <QMouseEvent>
#include <QPainter>

#include "CalendarPopUp.h"
#include "ui/Buttons.h"
#include "ui/Symbols.h"
#include "ui/Theme.h"
#include "ui_core/LogRange.h"

namespace pendra {

namespace {
constexpr int kSign = 14;
constexpr int kRoom = kSign + metrics::kGrid / 2 + 1;  // for each sign at the right
}  // namespace

DateField::DateField(QWidget* parent) : QLineEdit(parent) {
  setTextMargins(0, 0, kRoom, 0);
  setMouseTracking(true);
  connect(this, &QLineEdit::editingFinished, this, &DateField::lookAtText);
  // While somebody types, a mark may go but none appears.
  connect(this, &QLineEdit::textChanged, this, [this] {
    if (!hasFocus() || canRead()) lookAtText();
  });
}

void DateField::setReader(std::function<DayReader()> days) {
  days_ = std::move(days);
  lookAtText();
}

std::optional<DaySpan> DateField::reading() const {
  return days_ ? readDateField(text(), days_()) : std::nullopt;
}

bool DateField::isUnreadable() const { return property(kUnreadableProperty).toBool(); }

void DateField::lookAtText() {
  setUnreadable(!canRead());
  QString said = isUnreadable() ? tr("This date cannot be read and limits nothing.") : QString();
  if (const auto days = reading()) said = spokenDays(*days, days_().locale);
  setToolTip(said);
  setAccessibleDescription(said);
}

void DateField::setUnreadable(bool unreadable) {
  if (unreadable == isUnreadable()) return;
  setProperty(kUnreadableProperty, unreadable);
  setTextMargins(0, 0, unreadable ? 2 * kRoom : kRoom, 0);
  update();
  Q_EMIT unreadableChanged();
}

void DateField::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  QPainter painter(this);
  const Colours& colours = Theme::colours(palette());
  QRectF sign(0, 0, kSign, kSign);
  sign.moveCenter({width() - kRoom + kSign / 2.0, height() / 2.0});
  drawSymbol(painter, sign, Symbol::Calendar, isEnabled() ? colours.quiet : colours.disabled);
  if (!isUnreadable()) return;
  sign.translate(-kRoom, 0);  // the mark is a sign as well as a colour
  drawSymbol(painter, sign, Symbol::Warning, colours.warning);
}

void DateField::openCalendar() {
  const DayReader days = days_();
  const auto now = reading();
  auto* calendar = new CalendarPopUp(*this, now ? now->first : days.today, days.weekBegins);
  connect(calendar, &CalendarPopUp::picked, this, [this, days](QDate day) {
    setText(fieldDateOrToday(day, days));
    Q_EMIT editingFinished();
  });
  calendar->open();
}

void DateField::keyPressEvent(QKeyEvent* event) {
  const bool opens = event->key() == Qt::Key_Down && event->modifiers() & Qt::AltModifier;
  if (opens) return openCalendar();
  QLineEdit::keyPressEvent(event);
}

bool DateField::isOnSign(const QPoint& place) const {
  return place.x() >= width() - kRoom - metrics::kGrid / 2;
}

void DateField::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && isOnSign(event->pos())) return openCalendar();
  QLineEdit::mousePressEvent(event);
}

void DateField::mouseMoveEvent(QMouseEvent* event) {
  setCursor(isOnSign(event->pos()) ? Qt::ArrowCursor : Qt::IBeamCursor);
  QLineEdit::mouseMoveEvent(event);
}

}  // namespace pendra
