#include "RunningPills.h"

#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <cmath>
#include <utility>

#include "MenuButton.h"
#include "model/ActivityTitle.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui/Symbols.h"
#include "ui/TabularText.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kWidth = 290;
constexpr int kNarrowest = 150;
constexpr int kHeight = 28;
constexpr int kRing = metrics::kFocusRing;
constexpr qreal kRadius = 14;
constexpr int kSign = 16;
constexpr int kSignLeft = 7;
constexpr int kWordsLeft = 31;
constexpr int kWordsGap = 12;
constexpr int kTimeRight = 14;

}  // namespace

RunningPill::RunningPill() {
  setFont(Theme::controlFont());
  setFocusPolicy(Qt::TabFocus);
  setMouseTracking(true);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  setMaximumWidth(kWidth + 2 * kRing);
  setAccessibleDescription(tr("Stop"));
  connect(this, &QAbstractButton::clicked, this, [this] {
    const bool selects = std::exchange(besideSign_, false);
    if (!activity_) return;
    if (selects) {
      Q_EMIT selectAsked(activity_.get());
    } else {
      Q_EMIT stopAsked(activity_.get());
    }
  });
}

void RunningPill::showTimer(const RunningTimer& timer) {
  length_ = timer.length();
  const QString name = shortTitle(*timer.activity);
  const QString wholeName = activityTitle(*timer.activity);
  if (activity_ != timer.activity.get() || name_ != name || accessibleName() != wholeName) {
    activity_ = timer.activity;
    name_ = name;
    setAccessibleName(wholeName.isEmpty() ? name : wholeName);
    setToolTip(formatted(tr("Select %@ (Return), or stop it (Space)"), {accessibleName()}));
  }
  update();
}

QSize RunningPill::sizeHint() const { return {kWidth + 2 * kRing, kHeight + 2 * kRing}; }
QSize RunningPill::minimumSizeHint() const { return {kNarrowest, kHeight + 2 * kRing}; }

bool RunningPill::isOnSign(const QPointF& place) const { return place.x() < kRing + kWordsLeft; }

void RunningPill::paintEvent(QPaintEvent*) {
  const Colours& colours = Theme::colours(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF pill = QRectF(rect()).adjusted(kRing, kRing, -kRing, -kRing);
  const bool touched = underMouse() || isDown();
  painter.setPen(colours.runningLine);
  painter.setBrush(touched ? mixed(colours.runningRow, colours.running, 0.06) : colours.runningRow);
  painter.drawRoundedRect(pill.adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
  const bool onSign = underMouse() && isOnSign(mapFromGlobal(QCursor::pos()));
  const QRectF sign(pill.left() + kSignLeft, pill.center().y() - kSign / 2.0, kSign, kSign);
  drawSymbol(painter, sign, Symbol::Pause,
             onSign ? mixed(colours.running, colours.text, 0.35) : colours.running);

  QFont heavy = font();
  heavy.setWeight(QFont::DemiBold);
  QRectF words = pill.adjusted(kWordsLeft, 0, -kTimeRight, 0);
  painter.setFont(heavy);
  painter.setPen(colours.running);
  drawTabular(painter, words, Qt::AlignRight, length_);
  words.setRight(words.right() - tabularWidth(heavy, length_) - kWordsGap);
  painter.setFont(font());
  painter.setPen(colours.text);
  painter.drawText(words, Qt::AlignLeft | Qt::AlignVCenter,
                   fontMetrics().elidedText(name_, Qt::ElideRight, static_cast<int>(words.width())));
  if (!hasFocus()) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(colours.link, 2));
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kRadius + 2, kRadius + 2);
}

void RunningPill::mousePressEvent(QMouseEvent* event) {
  besideSign_ = !isOnSign(event->position());
  QAbstractButton::mousePressEvent(event);
}

void RunningPill::mouseMoveEvent(QMouseEvent* event) {
  QAbstractButton::mouseMoveEvent(event);
  update();
}

void RunningPill::keyPressEvent(QKeyEvent* event) {
  const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  besideSign_ = isReturn;
  if (isReturn) return click();
  QAbstractButton::keyPressEvent(event);
}

RunningPills::RunningPills() : more_(new MenuButton(QStringLiteral("moreRunning"), {})) {
  setObjectName(QStringLiteral("runningPills"));
  auto* lines = new QVBoxLayout(this);
  lines->setContentsMargins(0, 0, 0, 0);
  lines->setSpacing(0);
  lines->addStretch();
  for (RunningPill*& pill : pills_) {
    pill = new RunningPill;
    pill->hide();
    lines->addWidget(pill, 0, Qt::AlignLeft);
    connect(pill, &RunningPill::stopAsked, this, &RunningPills::stopAsked);
    connect(pill, &RunningPill::selectAsked, this, &RunningPills::selectAsked);
  }
  lines->addWidget(more_, 0, Qt::AlignLeft);
  lines->addStretch();
  more_->hide();
  connect(more_, &QAbstractButton::clicked, this, &RunningPills::openMenu);
  hide();
}

void RunningPills::showTimers(std::vector<RunningTimer> timers) {
  timers_ = std::move(timers);
  const std::size_t shown = timers_.size() > kLines ? kLines - 1 : timers_.size();
  for (std::size_t line = 0; line < kLines; ++line) {
    RunningPill& pill = *pills_[line];
    if (line < shown) pill.showTimer(timers_[line]);
    pill.setVisible(line < shown);
  }
  const QString more =
      counted(static_cast<qint64>(timers_.size() - shown), "1 more running", "%Ln more running");
  if (more_->text() != more) {
    more_->setText(more);
    more_->setAccessibleName(more);
    more_->updateGeometry();
  }
  more_->setVisible(timers_.size() > shown);
  setVisible(!timers_.empty());
}

/// Those that have no line of their own; what is chosen is selected, and can then be stopped by the button.
void RunningPills::openMenu() {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setObjectName(QStringLiteral("moreRunningMenu"));
  for (std::size_t n = kLines - 1; n < timers_.size(); ++n) {
    const RunningTimer& timer = timers_[n];
    if (!timer.activity) continue;
    const QString title = activityTitle(*timer.activity).replace(u'&', QStringLiteral("&&"));
    connect(menu->addAction(title + u'\t' + timer.length()), &QAction::triggered, this,
            [this, activity = timer.activity] {
              if (activity) Q_EMIT selectAsked(activity.get());
            });
  }
  menu->popup(more_->mapToGlobal(QPoint(0, more_->height())));
}

}  // namespace pendra
