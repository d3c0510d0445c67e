#include "CalendarPopUp.h"

#include <QKeyEvent>
#include <QScreen>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/Theme.h"

namespace pendra {

CalendarPopUp::CalendarPopUp(QWidget& field, QDate day, Qt::DayOfWeek weekBegins)
    : QFrame(&field, Qt::Popup), field_(field), calendar_(new QCalendarWidget) {
  setAttribute(Qt::WA_DeleteOnClose);
  setObjectName(QStringLiteral("calendarPopUp"));
  setAccessibleName(tr("Calendar"));
  setFrameShape(QFrame::StyledPanel);
  calendar_->setObjectName(QStringLiteral("calendar"));
  calendar_->setAccessibleName(tr("Calendar"));
  calendar_->setFont(Theme::controlFont());
  calendar_->setFirstDayOfWeek(weekBegins);
  calendar_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
  calendar_->setSelectedDate(day);
  for (const auto& [name, arrow] : {std::pair("qt_calendar_prevmonth", Qt::LeftArrow),
                                    std::pair("qt_calendar_nextmonth", Qt::RightArrow)}) {
    auto* step = calendar_->findChild<QToolButton*>(QString::fromLatin1(name));
    step->setIcon({});  // Qt's own are green, which means running time here
    step->setArrowType(arrow);
  }
  wearColours();
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(metrics::kGrid / 2, metrics::kGrid / 2, metrics::kGrid / 2, metrics::kGrid / 2);
  column->addWidget(calendar_);
  // Both a click and Return come as this.
  connect(calendar_, &QCalendarWidget::activated, this, [this](QDate chosen) {
    close();
    Q_EMIT picked(chosen);
  });
  connect(calendar_, &QCalendarWidget::clicked, this, [this](QDate chosen) {
    close();
    Q_EMIT picked(chosen);
  });
  setFocusProxy(calendar_);
}

void CalendarPopUp::open() {
  adjustSize();
  QPoint place = field_.mapToGlobal(QPoint(0, field_.height() + 2));
  const QRect screen = field_.screen()->availableGeometry();
  place.setX(std::clamp(place.x(), screen.left(), std::max(screen.left(), screen.right() - width())));
  if (place.y() + height() > screen.bottom()) place.setY(field_.mapToGlobal(QPoint(0, -height() - 2)).y());
  move(place);
  show();
  calendar_->setFocus();
}

/// Weekends are days as the others: red says that something will be wrong.
void CalendarPopUp::wearColours() {
  QTextCharFormat plain;
  plain.setForeground(Theme::colours(palette()).text);
  for (int day = Qt::Monday; day <= Qt::Sunday; ++day) {
    calendar_->setWeekdayTextFormat(static_cast<Qt::DayOfWeek>(day), plain);
  }
}

void CalendarPopUp::changeEvent(QEvent* event) {
  QFrame::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) wearColours();
}

void CalendarPopUp::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else {
    QFrame::keyPressEvent(event);
  }
}

}  // namespace pendra
