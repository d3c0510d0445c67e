#include <QButtonGroup>
#include <QComboBox>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "PreferencesPages.h"
#include "model/Hours.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr QSize kPicture{136, 76};
constexpr int kBetweenPictures = 24;
const QString kLight = QStringLiteral("light");
const QString kDark = QStringLiteral("dark");

/// A little timer window in one look.
void drawWindow(QPainter& painter, const QRectF& place, const Colours& colours) {
  const auto bar = [&](double x, double y, double width, double height, const QColor& colour) {
    painter.setBrush(colour);
    painter.drawRoundedRect(QRectF(place.left() + x, place.top() + y, width, height), 2, 2);
  };
  painter.setPen(Qt::NoPen);
  painter.fillRect(place, colours.base);
  painter.fillRect(QRectF(place.topLeft(), QSizeF(place.width(), 38)), colours.window);
  painter.setBrush(colours.running);
  painter.drawEllipse(QPointF(place.left() + 22, place.top() + 21), 9, 9);
  bar(38, 15, 44, 7, colours.text);
  for (const auto& [y, width] : {std::pair(45, 70), std::pair(55, 56), std::pair(65, 68)}) {
    bar(12, y, width, 4, mixed(colours.base, colours.quiet, 0.55));
    bar(106, y, 18, 4, mixed(colours.base, colours.quiet, 0.55));
  }
}

/// What a look looks like; a click on it chooses it.
class LookPicture final : public QWidget {
 public:
  LookPicture(QString value, QRadioButton& choice) : value_(std::move(value)), choice_(choice) {
    setFixedSize(kPicture);
    connect(&choice, &QRadioButton::toggled, this, qOverload<>(&QWidget::update));
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF place = QRectF(rect()).adjusted(1, 1, -1, -1);
    QPainterPath frame;
    frame.addRoundedRect(place, metrics::kRadius, metrics::kRadius);
    painter.save();
    painter.setClipPath(frame);
    drawWindow(painter, place, value_ == kDark ? Theme::dark() : Theme::light());
    if (value_.isEmpty()) {
      painter.setClipPath(frame.intersected(lowerHalf(place)));
      drawWindow(painter, place, Theme::dark());
    }
    painter.restore();
    const Colours& colours = Theme::colours(palette());
    const bool chosen = choice_.isChecked();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(chosen ? colours.link : colours.frame, chosen ? 2 : 1));
    painter.drawPath(frame);
  }
  void mousePressEvent(QMouseEvent*) override { choice_.click(); }

 private:
  static QPainterPath lowerHalf(const QRectF& place) {
    QPainterPath half;
    half.addPolygon(QPolygonF{place.topRight(), place.bottomRight(), place.bottomLeft()});
    half.closeSubpath();
    return half;
  }

  QString value_;
  QRadioButton& choice_;
};

}  // namespace

AppearancePage::AppearancePage(UserDefaults& preferences)
    : PreferencePage(preferences), looks_(new QButtonGroup(this)) {
  auto* looks = new QHBoxLayout;
  looks->setSpacing(kBetweenPictures);
  looks->addWidget(makeLook({}, tr("As the desktop")));
  looks->addWidget(makeLook(kLight, tr("Light")));
  looks->addWidget(makeLook(kDark, tr("Dark")));
  looks->addStretch();
  column().addLayout(looks);
  column().addWidget(
      quietWords(tr("Contrast, text size and less motion always follow the desktop."), kPreferencesWidth));
  auto* week = new QHBoxLayout;
  auto* words = new QLabel(tr("Week begins on"));
  QComboBox* days = makeWeek();
  words->setBuddy(days);
  week->addWidget(words);
  week->addWidget(days);
  week->addStretch();
  auto* reset = new QPushButton(tr("Reset Columns"));
  reset->setObjectName(QStringLiteral("resetColumns"));
  reset->setAccessibleDescription(tr("Shows all columns of both tables, in their own order and width."));
  reset->setToolTip(reset->accessibleDescription());
  connect(reset, &QPushButton::clicked, this, [this] {
    for (const QString& key : {preferences::kActivityColumns, preferences::kLogColumns}) {
      defaults().setText(key, QString());
    }
  });
  week->addWidget(reset);
  column().addLayout(week);
}

QWidget* AppearancePage::makeLook(const QString& value, const QString& title) {
  auto* choice = new QRadioButton(title, this);
  choice->setObjectName(QStringLiteral("look") + value);
  choice->setAccessibleName(title);
  looks_->addButton(choice);
  follow(preferences::kAppearance, [this, choice, value] {
    const QSignalBlocker silent(choice);
    const QString chosen = defaults().text(preferences::kAppearance).value_or(QString());
    if (value == (chosen == kLight || chosen == kDark ? chosen : QString())) choice->setChecked(true);
    update();
  });
  connect(choice, &QRadioButton::clicked, this, [this, value] {
    defaults().setText(preferences::kAppearance, value);
    Theme::force(defaults());
  });
  auto* look = new QWidget;
  auto* both = new QVBoxLayout(look);
  both->setContentsMargins(0, 0, 0, 0);
  both->setSpacing(metrics::kGrid);
  both->addWidget(new LookPicture(value, *choice));
  both->addWidget(choice, 0, Qt::AlignHCenter);
  return look;
}

QComboBox* AppearancePage::makeWeek() {
  auto* days = new QComboBox;
  days->setObjectName(preferences::kWeekBegins);
  days->setAccessibleName(tr("Week begins on"));
  for (int day = Qt::Monday; day <= Qt::Sunday; ++day) days->addItem(locale().standaloneDayName(day));
  follow(preferences::kWeekBegins, [this, days] {
    const QSignalBlocker silent(days);
    days->setCurrentIndex(weekBegins(defaults(), locale()) - Qt::Monday);
  });
  connect(days, &QComboBox::activated, this, [this](int index) {
    defaults().setText(preferences::kWeekBegins, QString::number(index + Qt::Monday));
  });
  return days;
}

}  // namespace pendra
