#include "ui/TimeAwayWindow.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "AwayStrip.h"
#include "model/ActivityTitle.h"
#include "ui/Buttons.h"
#include "ui/HelpPlace.h"
#include "ui/Labels.h"
#include "ui/Theme.h"
#include "ui_core/HelpAnchors.h"

namespace pendra {

namespace {

constexpr int kWide = 440;
constexpr int kMargin = 20;
constexpr int kUnderRadio = 26;

QLabel* quietLabel(const QString& name) {
  return makeLabel({}, {.font = Theme::quietFont(), .isQuiet = true, .objectName = name});
}

QFont headingFont() {
  QFont font = Theme::labelFont();
  font.setWeight(QFont::DemiBold);
  font.setPointSizeF(font.pointSizeF() * 1.2);
  return font;
}

void addIndented(QLayout& column, QWidget* widget) {
  auto* row = new QHBoxLayout;
  row->setContentsMargins(kUnderRadio, 0, 0, 0);
  row->addWidget(widget);
  static_cast<QBoxLayout&>(column).addLayout(row);
}

}  // namespace

TimeAwayWindow::TimeAwayWindow(const WindowFrame& frame)
    : ShellWindow(frame, tr("Time Away")), session_(frame.session) {
  setHelpAnchor(*this, help::kTimeAway);
  auto* page = new QWidget;
  page->setFixedWidth(Theme::wide(kWide) + 2 * kMargin);
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  column->setSpacing(metrics::kGrid);
  heading_ = makeLabel({}, {.font = headingFont(), .objectName = QStringLiteral("away")});
  heading_->setAccessibleName(tr("Away"));
  words_ = quietLabel(QStringLiteral("awayWords"));
  words_->setWordWrap(true);
  strip_ = new AwayStrip(session_.ports().calendar);
  for (QWidget* widget :
       {static_cast<QWidget*>(heading_), static_cast<QWidget*>(words_), static_cast<QWidget*>(strip_)}) {
    column->addWidget(widget);
  }
  makeChoices(*column);
  makeButtons(*column);
  setContent(page);
  connect(&tick_, &QTimer::timeout, this, [this] { showChoice(); });
  documents_ = session_.documentChanges().observe([this] { follow(); });
  follow();
}

void TimeAwayWindow::makeChoices(QLayout& column) {
  for (std::size_t way = 0; way < ways_.size(); ++way) {
    auto* button = new QRadioButton(this);
    button->setObjectName(QStringLiteral("awayChoice%1").arg(way));
    ways_[way] = {button, quietLabel(QStringLiteral("awayExplanation%1").arg(way))};
    ways_[way].explanation->setWordWrap(true);
    auto* both = new QVBoxLayout;
    both->setSpacing(0);
    both->addWidget(button);
    addIndented(*both, ways_[way].explanation);
    static_cast<QBoxLayout&>(column).addLayout(both);
    connect(button, &QRadioButton::toggled, this, [this] { showChoice(); });
  }
  activity_ = new QComboBox;
  activity_->setObjectName(QStringLiteral("awayActivity"));
  activity_->setAccessibleName(tr("Activity"));
  addIndented(column, activity_);
  const QSignalBlocker silent(ways_[static_cast<std::size_t>(AwayChoice::TakeOff)].button);
  ways_[static_cast<std::size_t>(AwayChoice::TakeOff)].button->setChecked(true);
}

void TimeAwayWindow::makeButtons(QLayout& column) {
  auto* row = new QHBoxLayout;
  row->setContentsMargins(0, metrics::kGrid, 0, 0);
  QLabel* meanwhile = quietLabel(QStringLiteral("awayMeanwhile"));
  meanwhile->setText(tr("Until you decide, it is kept and marked."));
  row->addWidget(meanwhile, 1);
  auto* later = new QPushButton(tr("Later"));
  later->setObjectName(QStringLiteral("later"));
  deed_ = new QPushButton;
  deed_->setObjectName(QStringLiteral("deed"));
  makePrimary(*deed_);
  for (QPushButton* button : {later, deed_}) {
    button->setAutoDefault(true);  // so that Return presses it
    row->addWidget(button);
  }
  static_cast<QBoxLayout&>(column).addLayout(row);
  connect(later, &QPushButton::clicked, this, [this] { close(); });
  connect(deed_, &QPushButton::clicked, this, [this] { answer(); });
}

void TimeAwayWindow::showEvent(QShowEvent* event) {
  ShellWindow::showEvent(event);
  deed_->setFocus();
  tick_.start(1000);
}

void TimeAwayWindow::hideEvent(QHideEvent* event) {
  tick_.stop();
  ShellWindow::hideEvent(event);
}

void TimeAwayWindow::follow() {
  edits_ = {};
  if (const auto context = session_.context()) {
    edits_ = context->observe([this](const ChangeSet&) { update(); });
  }
  update();
}

void TimeAwayWindow::update() {
  const auto context = session_.context();
  const TimeAway away = context ? timeAway(*context) : TimeAway{};
  shown_.assign(away.entries.begin(), away.entries.end());
  if (away.entries.empty()) {
    if (isVisible()) close();
    return;
  }
  fillActivities();
  showChoice();
}

void TimeAwayWindow::fillActivities() {
  const int before = activity_->currentIndex();
  const Ref<Activity> chosen = before < 0 ? Ref<Activity>() : activities_[static_cast<std::size_t>(before)];
  const auto others = otherActivities(*session_.context(), timeAway(*session_.context()));
  activities_.assign(others.begin(), others.end());
  activity_->clear();
  for (const Activity* other : others) activity_->addItem(activityTitle(*other));
  const auto same = std::find(activities_.begin(), activities_.end(), chosen);
  if (chosen && same != activities_.end())
    activity_->setCurrentIndex(static_cast<int>(same - activities_.begin()));
  ways_[static_cast<std::size_t>(AwayChoice::Book)].button->setEnabled(!others.empty());
}

AwayChoice TimeAwayWindow::choice() const {
  const auto chosen =
      std::find_if(ways_.begin(), ways_.end(), [](const Way& way) { return way.button->isChecked(); });
  return static_cast<AwayChoice>(chosen - ways_.begin());
}

void TimeAwayWindow::showChoice() {
  const auto context = session_.context();
  const TimeAway away = context ? timeAway(*context) : TimeAway{};
  if (away.entries.empty()) return;
  const AwayTexts texts = awayTexts(session_, away);
  heading_->setText(texts.heading);
  heading_->setAccessibleDescription(texts.heading + u' ' + texts.words);
  words_->setText(texts.words);
  for (std::size_t way = 0; way < ways_.size(); ++way) {
    const auto& [title, explanation, deed] = texts.ways[way];
    ways_[way].button->setText(title);
    ways_[way].button->setAccessibleName(title);
    ways_[way].button->setAccessibleDescription(explanation);
    ways_[way].explanation->setText(explanation);
  }
  activity_->setEnabled(choice() == AwayChoice::Book);
  deed_->setText(texts.ways[static_cast<std::size_t>(choice())].deed);
  strip_->show(awayShape(away), choice());
}

void TimeAwayWindow::answer() {
  const AwayEntries entries = shown_;
  ObjectContext& context = *session_.context();
  if (choice() == AwayChoice::Keep) return keepAway(context, entries);
  if (choice() == AwayChoice::TakeOff) return takeAwayOff(context, entries);
  const int chosen = activity_->currentIndex();
  if (chosen >= 0 && activities_[static_cast<std::size_t>(chosen)]) {
    bookAway(context, entries, *activities_[static_cast<std::size_t>(chosen)]);
  }
}

}  // namespace pendra
