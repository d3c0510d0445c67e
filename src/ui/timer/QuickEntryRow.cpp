#include "QuickEntryRow.h"

#include <QEvent>
#include <QHBoxLayout>

#include "CompletionList.h"
#include "QuickEntryField.h"
#include "QuickEntryPanel.h"
#include "ui/HelpPlace.h"
#include "ui/Theme.h"
#include "ui_core/HelpAnchors.h"

namespace pendra {

namespace {

constexpr int kRow = 44;
/// The reading names the time of day.
constexpr std::chrono::seconds kTick{1};

}  // namespace

QuickEntryRow::QuickEntryRow(TimerState& state, const QString& keyHint)
    : entry_(state), field_(new QuickEntryField(keyHint)), row_(new QHBoxLayout(this)) {
  setFixedHeight(kRow);
  row_->setContentsMargins(metrics::kSide, 0, metrics::kSide, kRow - metrics::kButtonHeight);
  row_->setSpacing(metrics::kSide);
  row_->addWidget(field_, 1);
  setFocusProxy(field_);
  field_->setObjectName(QStringLiteral("quickEntry"));
  field_->setAccessibleName(tr("Quick entry"));
  field_->setPlaceholderText(tr("What are you working on?"));
  setHelpAnchor(*field_, help::kQuickEntry);
  connect(field_, &QLineEdit::textChanged, this, &QuickEntryRow::textChanged);
  connect(field_, &QuickEntryField::focusChanged, this, [this](bool isIn) {
    if (!isIn) return hidePanel();
    entry_.prepare();
    showPanel();
  });
  connect(field_, &QuickEntryField::moved, this, [this](int by) {
    if (!isPanelShown()) return showPanel();
    panel_->completions().move(by);
  });
  connect(field_, &QuickEntryField::tabbed, this, [this](bool& taken) { taken = takeCompletion(); });
  connect(field_, &QuickEntryField::entered, this, &QuickEntryRow::enter);
  connect(field_, &QuickEntryField::escaped, this, &QuickEntryRow::close);
  connect(&clock_, &QTimer::timeout, this, &QuickEntryRow::showReading);
}

void QuickEntryRow::focusField() {
  field_->setFocus(Qt::ShortcutFocusReason);
  field_->selectAll();
}

void QuickEntryRow::addTool(QWidget* tool) {
  row_->addWidget(tool);
  setTabOrder(field_, tool);  // as they are read
}

bool QuickEntryRow::isPanelShown() const { return panel_ && panel_->isVisible(); }

void QuickEntryRow::textChanged() {
  typed_ = true;
  if (field_->hasFocus()) showPanel();
}

void QuickEntryRow::showPanel() {
  if (field_->text().trimmed().isEmpty()) return hidePanel();
  if (!panel_) {
    panel_ = new QuickEntryPanel(window());
    field_->installEventFilter(this);
    connect(panel_, &QuickEntryPanel::chosenChanged, this, &QuickEntryRow::describe);
    connect(panel_, &QuickEntryPanel::picked, this, [this] { takeCompletion(); });
  }
  texts_ = entry_.say(entry_.read(field_->text()));
  panel_->say(texts_, entry_.completions(field_->text()));
  placePanel();
  describe();
  clock_.start(kTick);
}

void QuickEntryRow::showReading() {
  if (!isPanelShown()) return clock_.stop();
  const QString before = std::exchange(texts_, entry_.say(entry_.read(field_->text()))).deed;
  panel_->sayReading(texts_);
  placePanel();
  if (texts_.deed != before) describe();  // seconds of an overlap are not read out
}

void QuickEntryRow::hidePanel() {
  clock_.stop();
  texts_ = {};
  if (panel_) panel_->hide();
  describe();
}

void QuickEntryRow::placePanel() {
  panel_->placeUnder(QRect(field_->mapTo(window(), QPoint()), field_->size()));
}

/// What is chosen is what Return takes.
void QuickEntryRow::describe() {
  const QuickCompletion* chosen = isPanelShown() ? panel_->completions().chosen() : nullptr;
  const QString text = chosen ? chosen->title : texts_.joined();
  if (field_->accessibleDescription() != text) field_->setAccessibleDescription(text);
}

void QuickEntryRow::enter() {
  if (!isPanelShown()) return showPanel();
  if (panel_->completions().chosen()) {
    takeCompletion();
    return;
  }
  const QString text = field_->text();
  if (const auto fault = entry_.read(text).fault) {
    field_->setSelection(static_cast<int>(fault->at), static_cast<int>(fault->length));
    return showReading();
  }
  // Without a step of its own, so that the next Undo takes the entry back.
  if (!entry_.carryOut(text)) return;
  field_->setText(QString());
  entry_.prepare();
}

/// Without a choice the first, once for what was typed: then Tab goes on to what follows.
bool QuickEntryRow::takeCompletion() {
  if (!isPanelShown()) return false;
  const CompletionList& list = panel_->completions();
  const QuickCompletion* completion = list.chosen() ? list.chosen() : typed_ ? list.first() : nullptr;
  if (!completion) return false;
  const QString text = entry_.taken(*completion);
  const qsizetype times = completion->times.isEmpty() ? 0 : completion->times.size() + 1;
  field_->selectAll();
  field_->insert(text);  // as if typed, so that it can be undone
  field_->setCursorPosition(static_cast<int>(text.size() - times));
  typed_ = false;
  return true;
}

void QuickEntryRow::close(bool& closed) {
  closed = isPanelShown() || !field_->text().isEmpty();
  if (isPanelShown()) return hidePanel();
  field_->selectAll();
  field_->del();
}

bool QuickEntryRow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && isPanelShown()) placePanel();
  return QWidget::eventFilter(watched, event);
}

void QuickEntryRow::moveEvent(QMoveEvent* event) {
  QWidget::moveEvent(event);
  if (isPanelShown()) placePanel();
}

}  // namespace pendra
