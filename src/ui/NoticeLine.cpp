#include "ui/NoticeLine.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPropertyAnimation>
#include <QPushButton>
#include <QResizeEvent>

#include "platform/Translation.h"
#include "ui/Buttons.h"
#include "ui/TabularText.h"
#include "ui/Theme.h"

namespace pendra {

namespace {
constexpr int kSlideMs = 120;
constexpr int kBarHeight = 32;
}  // namespace

NoticeLine::NoticeLine(Notices& notices, In where, QWidget* parent)
    : QFrame(parent), notices_(notices), where_(where), words_(new QLabel(this)) {
  setObjectName(QStringLiteral("noticeLine"));
  setAccessibleName(tr("Notice"));
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(metrics::kSide + 12, gapAbove() + 2, metrics::kSide + 4, metrics::kGrid + 2);
  row->setSpacing(2);
  words_->setTextFormat(Qt::PlainText);
  words_->setWordWrap(true);
  words_->setMinimumHeight(kBarHeight - 4);
  row->addWidget(words_, 1);
  more_ = newButton(*row);
  more_->setToolTip(tr("Show the next notice"));
  connect(more_, &QPushButton::clicked, this, &NoticeLine::showOlder);
  for (int action = 0; action < kMostActions; ++action) {
    actions_.push_back(newButton(*row));
    connect(actions_.back(), &QPushButton::clicked, this, [this, action] { press(action); });
  }
  dismiss_ = newButton(*row);
  dismiss_->setText(QStringLiteral("✕"));
  dismiss_->setAccessibleName(tr("Dismiss"));
  dismiss_->setToolTip(tr("Dismiss"));
  connect(dismiss_, &QPushButton::clicked, this, &NoticeLine::dismiss);
  slide_ = new QPropertyAnimation(this, "maximumHeight", this);
  connect(slide_, &QPropertyAnimation::finished, this, [this] { setMaximumHeight(QWIDGETSIZE_MAX); });
  colourButtons();
  hide();
  changes_ = notices_.changes().observe([this] { showNewest(); });
  showNewest();
}

/// Under a menu bar it needs room that the timer window's header has already.
int NoticeLine::gapAbove() const { return where_ == In::TimerWindow ? 0 : metrics::kGrid; }

QPushButton* NoticeLine::newButton(QHBoxLayout& row) {
  auto* button = new QPushButton(this);
  makeQuiet(*button);
  button->setFocusPolicy(Qt::TabFocus);
  QFont font = button->font();
  font.setWeight(QFont::DemiBold);
  button->setFont(font);
  row.addWidget(button);
  return button;
}

QString NoticeLine::text() const { return key_.isNull() ? QString() : words_->text(); }

std::vector<const Notice*> NoticeLine::standing() const {
  std::vector<const Notice*> all;
  for (const Notice& notice : notices_.standing()) {
    if (where_ == In::TimerWindow || !notice.onlyInTimerWindow) all.insert(all.begin(), &notice);
  }
  // What reminds must not hide what is asked about time that nobody has counted yet.
  const auto last = std::find_if(all.begin(), all.end(), [](const Notice* one) { return one->comesLast; });
  const auto question =
      std::find_if(all.rbegin(), all.rend(), [](const Notice* one) { return one->asks && !one->comesLast; });
  if (last < question.base()) std::rotate(last, last + 1, question.base());
  return all;
}

void NoticeLine::showNewest() {
  back_ = 0;
  if (!standing().empty()) return showChosen();
  key_ = QString();
  hide();
}

void NoticeLine::showOlder() {
  back_ = (back_ + 1) % standing().size();
  showChosen();
}

void NoticeLine::showChosen() {
  const auto standing = this->standing();
  const Notice& notice = *standing[back_];
  const bool isNew = isHidden() || key_ != notice.key || words_->text() != notice.text;
  key_ = notice.key.isNull() ? QStringLiteral("") : notice.key;
  showText(*words_, notice.text);
  setAccessibleDescription(notice.text);
  more_->setVisible(standing.size() > 1);
  more_->setText(counted(std::ssize(standing) - 1, "1 more", "%Ln more"));
  more_->setAccessibleName(more_->text());
  showButtons(notice);
  if (isHidden()) slideIn();
  if (!isNew) return;
  QAccessibleEvent alert(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void NoticeLine::showButtons(const Notice& notice) {
  for (size_t action = 0; action < actions_.size(); ++action) {
    const bool used = action < notice.actions.size();
    actions_[action]->setVisible(used);
    if (!used) continue;
    actions_[action]->setText(notice.actions[action].title);
    actions_[action]->setAccessibleName(notice.actions[action].title);
  }
}

void NoticeLine::slideIn() {
  show();
  if (!window()->isVisible()) return;
  slide_->stop();
  slide_->setDuration(Theme::motion(kSlideMs));
  slide_->setStartValue(0);
  slide_->setEndValue(sizeHint().height());
  slide_->start();
}

void NoticeLine::press(int action) {
  const auto standing = this->standing();
  if (!standing.empty()) notices_.press(standing[back_]->key, static_cast<size_t>(action));
}

void NoticeLine::dismiss() { notices_.withdraw(QString(key_)); }

QSize NoticeLine::sizeHint() const { return {QFrame::sizeHint().width(), heightForWidth(width())}; }

void NoticeLine::resizeEvent(QResizeEvent* event) {
  QFrame::resizeEvent(event);
  if (event->size().width() != event->oldSize().width()) updateGeometry();
}

void NoticeLine::paintEvent(QPaintEvent*) {
  const Colours& colours = Theme::colours(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(colours.noticeLine);
  painter.setBrush(colours.noticeBack);
  const QRectF bar = QRectF(rect()).adjusted(metrics::kSide + 0.5, gapAbove() + 0.5, -metrics::kSide - 0.5,
                                             -metrics::kGrid - 0.5);
  painter.drawRoundedRect(bar, metrics::kRadius, metrics::kRadius);
}

void NoticeLine::changeEvent(QEvent* event) {
  QFrame::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && dismiss_) colourButtons();
}

void NoticeLine::colourButtons() {
  const QColor ink = Theme::colours(palette()).notice;
  for (QWidget* part : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    if (part->palette().color(QPalette::ButtonText) == ink) continue;
    QPalette own;
    own.setColor(QPalette::WindowText, ink);
    own.setColor(QPalette::ButtonText, ink);
    part->setPalette(own);
  }
}

}  // namespace pendra
