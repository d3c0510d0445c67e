#include "ui/SplitSheet.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "EntryAdapters.h"
#include "document/Session.h"
#include "ui/Buttons.h"
#include "ui/HelpPlace.h"
#include "ui/Labels.h"
#include "ui/SheetRunner.h"
#include "ui/Theme.h"
#include "ui_core/HelpAnchors.h"
#include "ui_core/LogCorrections.h"

namespace pendra {

namespace {

constexpr int kWide = 440;
constexpr int kFieldWide = 120;
constexpr int kEdge = 24;

QFont titleFont() {
  QFont font = Theme::cellFont();
  font.setWeight(QFont::DemiBold);
  return font;
}

}  // namespace

SplitSheet::SplitSheet(Session& session, TimeEntry& entry, QWidget* window)
    : QDialog(window), session_(session), entry_(&entry), time_(new QLineEdit), echo_(new EchoLine) {
  setObjectName(QStringLiteral("splitEntry"));
  setWindowTitle(tr("Split Entry"));
  setHelpAnchor(*this, help::kTimeLog);
  build();
  connect(time_, &QLineEdit::textChanged, this, &SplitSheet::showReading);
  time_->setText(splitTexts(entry).proposal);
  time_->selectAll();
}

void SplitSheet::build() {
  const SplitTexts texts = splitTexts(*entry_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kEdge, kEdge, kEdge, metrics::kSide);
  column->setSpacing(metrics::kGrid);
  column->addWidget(makeLabel(texts.title, {.font = titleFont(), .wraps = true}));
  QLabel* span = makeLabel(texts.span, {.font = Theme::quietFont(), .isQuiet = true, .wraps = true});
  column->addWidget(span);
  time_->setObjectName(QStringLiteral("timeField"));
  time_->setAccessibleName(tr("Time"));
  time_->setFixedWidth(Theme::wide(kFieldWide));
  auto* label = new QLabel(tr("Time"));
  label->setBuddy(time_);
  auto* row = new QHBoxLayout;
  row->setSpacing(12);
  row->addWidget(label);
  row->addWidget(time_);
  row->addWidget(echo_, 1);
  column->addSpacing(metrics::kGrid);
  column->addLayout(row);
  column->addSpacing(metrics::kGrid);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  QPushButton* cancel = makeSheetButton(tr("Cancel"), this);
  QPushButton* split = makeSheetButton(tr("Split"), this);
  cancel->setObjectName(QStringLiteral("cancelButton"));
  split->setObjectName(QStringLiteral("splitButton"));
  split->setDefault(true);
  makePrimary(*split);
  buttons->addWidget(cancel);
  buttons->addWidget(split);
  column->addLayout(buttons);
  echo_->setWordWrap(true);
  setFixedWidth(Theme::wide(kWide));
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(split, &QPushButton::clicked, this, &SplitSheet::finish);
}

void SplitSheet::showReading() {
  const SplitReading reading = entry_ ? readSplit(*entry_, time_->text()) : SplitReading{};
  at_ = reading.at;
  echo_->showEcho(reading.echo);
  describeField(*time_, {reading.echo});
  markUnreadable(*time_, !reading.at);
}

/// A time at which it cannot be cut keeps the sheet open; the reason stands beside the field.
void SplitSheet::finish() {
  showReading();
  if (at_ || !entry_) return accept();
  time_->setFocus(Qt::OtherFocusReason);
  time_->selectAll();
}

void SplitSheet::run() {
  time_->setFocus();
  const bool isAccepted = SheetRunner(session_.ports().modals).run(*this) == SheetRunner::kAccepted;
  if (isAccepted && entry_ && at_) split(*entry_, *at_);
}

}  // namespace pendra
