#include "ui/EarlierSheet.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "ui/Buttons.h"
#include "ui/EchoLine.h"
#include "ui/HelpPlace.h"
#include "ui/SheetRunner.h"
#include "ui/Theme.h"
#include "ui_core/HelpAnchors.h"

namespace pendra {

namespace {

constexpr int kWide = 400;
constexpr int kMargin = 20;
constexpr int kTimeField = 120;
constexpr int kEchoLines = 3;
constexpr std::chrono::milliseconds kTick{1000};

}  // namespace

EarlierSheet::EarlierSheet(Session& session, Activity& activity, EarlierDeed deed, QWidget* window)
    : QDialog(window), session_(session), timer_(session, activity, deed) {
  const bool starts = deed == EarlierDeed::Start;
  setObjectName(starts ? QStringLiteral("startEarlier") : QStringLiteral("stopEarlier"));
  setHelpAnchor(*this, help::kStartEarlier);
  setWindowTitle(starts ? tr("Start Earlier") : tr("Stop Earlier"));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  column->setSpacing(metrics::kGrid);
  column->setSizeConstraint(QLayout::SetFixedSize);
  auto* heading = new QLabel(timer_.title());
  heading->setTextFormat(Qt::PlainText);
  heading->setWordWrap(true);
  QFont font = Theme::labelFont();
  font.setWeight(QFont::DemiBold);
  heading->setFont(font);
  heading->setFixedWidth(Theme::wide(kWide));
  column->addWidget(heading);
  column->addSpacing(metrics::kGrid / 2);
  column->addWidget(addChoice(EarlierMoment::FiveMinutes, tr("5 minutes ago")));
  column->addWidget(addChoice(EarlierMoment::TenMinutes, tr("10 minutes ago")));
  column->addWidget(addChoice(EarlierMoment::FifteenMinutes, tr("15 minutes ago")));
  column->addWidget(addChoice(EarlierMoment::LastEnd, tr("At the end of the last entry")));
  choices_[static_cast<std::size_t>(EarlierMoment::LastEnd)]->setEnabled(timer_.lastEnd().has_value());
  column->addLayout(makeTyped());
  echo_ = new EchoLine(this);
  echo_->setObjectName(QStringLiteral("echo"));
  echo_->setWordWrap(true);
  echo_->setFixedSize(Theme::wide(kWide), kEchoLines * echo_->fontMetrics().lineSpacing());
  column->addWidget(echo_);
  column->addLayout(makeButtons(starts ? tr("Start") : tr("Stop")));
  choices_.front()->setChecked(true);
  choices_.front()->setFocus();
  connect(&tick_, &QTimer::timeout, this, [this] { showReading(); });
  showReading();
}

QRadioButton* EarlierSheet::addChoice(EarlierMoment moment, const QString& text) {
  auto* choice = new QRadioButton(text, this);
  choice->setObjectName(QStringLiteral("moment%1").arg(static_cast<int>(moment)));
  choice->setAccessibleName(text);
  connect(choice, &QRadioButton::toggled, this, [this](bool chosen) {
    if (chosen) showReading();
  });
  choices_[static_cast<std::size_t>(moment)] = choice;
  return choice;
}

QLayout* EarlierSheet::makeTyped() {
  QRadioButton* at = addChoice(EarlierMoment::Typed, tr("At"));
  time_ = new QLineEdit;
  time_->setObjectName(QStringLiteral("time"));
  time_->setAccessibleName(tr("Time"));
  time_->setFixedWidth(Theme::wide(kTimeField));
  connect(time_, &QLineEdit::textEdited, this, [this, at] {
    at->setChecked(true);
    showReading();
  });
  connect(at, &QRadioButton::clicked, time_, qOverload<>(&QWidget::setFocus));
  auto* row = new QHBoxLayout;
  row->addWidget(at);
  row->addWidget(time_);
  row->addStretch();
  return row;
}

QLayout* EarlierSheet::makeButtons(const QString& deed) {
  QPushButton* cancel = makeSheetButton(tr("Cancel"), this);
  cancel->setAutoDefault(false);
  deed_ = makeSheetButton(deed, this);
  deed_->setDefault(true);
  makePrimary(*deed_);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(deed_, &QPushButton::clicked, this, [this] { finish(); });
  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(cancel);
  row->addWidget(deed_);
  return row;
}

EarlierMoment EarlierSheet::moment() const {
  const auto chosen = std::find_if(choices_.begin(), choices_.end(),
                                   [](const QRadioButton* one) { return one->isChecked(); });
  return static_cast<EarlierMoment>(chosen - choices_.begin());
}

void EarlierSheet::showReading() {
  if (!echo_ || !deed_) return;
  const auto [at, echo] = timer_.read(moment(), time_->text());
  echo_->showEcho(echo);
  deed_->setEnabled(at.has_value());
  const bool isTyped = moment() == EarlierMoment::Typed;
  for (QRadioButton* choice : choices_) describeField(*choice, {choice->isChecked() ? echo : Echo{}});
  describeField(*time_, {isTyped ? echo : Echo{}});
  const bool unreadable = isTyped && !at && !time_->text().trimmed().isEmpty();
  if (time_->property(kUnreadableProperty).toBool() == unreadable) return;
  time_->setProperty(kUnreadableProperty, unreadable);
  time_->update();
}

void EarlierSheet::finish() {
  if (timer_.perform(moment(), time_->text())) return accept();
  showReading();  // what was right a moment ago is not any more
}

void EarlierSheet::run() {
  tick_.start(kTick);
  SheetRunner(session_.ports().modals).run(*this);
  tick_.stop();
}

void askWhenEarlier(Session& session, Activity* activity, EarlierDeed deed, QWidget* window) {
  if (activity && activity->isRunning() == (deed == EarlierDeed::Stop)) {
    EarlierSheet(session, *activity, deed, window).run();
  }
}

}  // namespace pendra
