#include "SinceBackupView.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

#include "model/DurationText.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui/Buttons.h"
#include "ui/TabularText.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kWidth = 340;
constexpr int kAroundWords = 8;  // in a quiet button
constexpr double kSubject = 17.0 / 13.0;

QLabel* words(QFont::Weight weight = QFont::Normal, double scale = 1) {
  auto* label = new QLabel;
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  QFont font = Theme::controlFont();
  font.setWeight(weight);
  font.setPointSizeF(font.pointSizeF() * scale);
  label->setFont(font);
  return label;
}

/// A thin line across.
class Rule final : public QWidget {
 public:
  Rule() { setFixedHeight(1); }

 protected:
  void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), Theme::colours(palette()).line); }
};

}  // namespace

SinceBackupView::SinceBackupView(QWidget* parent)
    : QWidget(parent),
      when_(words(QFont::DemiBold, kSubject)),
      whole_(words()),
      head_(words(QFont::DemiBold)),
      lines_(new QGridLayout),
      sent_(words()),
      note_(words()) {
  setFixedWidth(Theme::wide(kWidth));
  head_->setObjectName(QStringLiteral("sinceThen"));
  head_->setText(tr("Since then"));
  head_->setAccessibleName(tr("Since then"));
  sent_->setObjectName(QStringLiteral("sentSince"));
  for (QLabel* quiet : {whole_, note_}) quiet->setForegroundRole(QPalette::PlaceholderText);
  note_->setText(tr("Today’s document is backed up first, so you can come back."));
  auto* folder = new QPushButton(tr("Show in Folder"));
  folder->setObjectName(QStringLiteral("showInFolder"));
  folder->setAccessibleName(folder->text());
  makeQuiet(*folder);
  connect(folder, &QPushButton::clicked, this, &SinceBackupView::showInFolder);
  lines_->setColumnStretch(0, 1);
  lines_->setVerticalSpacing(metrics::kGrid);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(metrics::kSide - kAroundWords, metrics::kSide, metrics::kSide, metrics::kSide);
  all->setSpacing(metrics::kGrid);
  auto* column = new QVBoxLayout;
  column->setContentsMargins(kAroundWords, 0, 0, 0);
  all->addLayout(column);
  for (QWidget* part : {static_cast<QWidget*>(when_), static_cast<QWidget*>(whole_),
                        static_cast<QWidget*>(new Rule), static_cast<QWidget*>(head_)}) {
    column->addWidget(part);
  }
  column->addLayout(lines_);
  column->addWidget(new Rule);
  column->addWidget(sent_);
  column->addWidget(note_);
  all->addWidget(folder, 0, Qt::AlignLeft);
  all->addStretch();
  colourWarning();
}

void SinceBackupView::showBackup(const QString& when, const EntrySum& entries) {
  when_->setText(when);
  whole_->setText(u"✓ " + counted(entries.number, "1 entry, %@. Read back and whole.",
                                  "%Ln entries, %@. Read back and whole.", {durationText(entries.seconds)}));
}

void SinceBackupView::showDamage(const QString& when, const QString& why) {
  showSince({});
  when_->setText(when);
  whole_->setText(formatted(tr("This backup cannot be read: %@."), {why}));
  head_->setAccessibleDescription(whole_->text());
}

void SinceBackupView::showSince(const SinceBackup& since) {
  while (QLayoutItem* item = lines_->takeAt(0)) {
    item->widget()->deleteLater();
    item->widget()->hide();
    delete item;
  }
  spoken_.clear();
  const auto addSum = [this](const EntrySum& sum, const QString& text) {
    if (sum.number > 0) addLine(text, durationText(sum.seconds));
  };
  addSum(since.added, counted(since.added.number, "1 entry added", "%Ln entries added"));
  addSum(since.corrected, counted(since.corrected.number, "1 entry corrected", "%Ln entries corrected"));
  addSum(since.deleted, counted(since.deleted.number, "1 entry deleted", "%Ln entries deleted"));
  if (!since.completed.isEmpty()) {
    addLine(since.completed.size() == 1
                ? formatted(tr("“%@” completed"), {since.completed.front()})
                : counted(since.completed.size(), "1 activity completed", "%Ln activities completed"));
  }
  if (!since.customers.isEmpty()) {
    addLine(since.customers.size() == 1
                ? formatted(tr("1 customer added: %@"), {since.customers.front()})
                : counted(since.customers.size(), "1 customer added", "%Ln customers added"));
  }
  if (spoken_.isEmpty())
    addLine(since.isNothing() ? tr("Nothing has changed.") : tr("No entry has changed."));
  sent_->setVisible(since.sent.number > 0);
  sent_->setText(u"⚠ " +
                 counted(since.sent.number,
                         "1 entry was sent to Vantor since then. It stays as it is, so that nothing is "
                         "sent twice.",
                         "%Ln entries were sent to Vantor since then. They stay as they are, so that "
                         "nothing is sent twice."));
  if (since.sent.number > 0) spoken_ << sent_->text().mid(2);
  head_->setAccessibleDescription(spoken_.join(QStringLiteral("; ")));
}

void SinceBackupView::addLine(const QString& text, const QString& length) {
  const int row = lines_->rowCount();
  QLabel* said = words();
  said->setText(text);
  lines_->addWidget(said, row, 0, 1, length.isEmpty() ? 2 : 1);
  spoken_ << (length.isEmpty() ? text : text + u", " + length);
  if (length.isEmpty()) return;
  auto* figures = new TabularLabel;
  figures->setFont(Theme::controlFont());
  figures->setText(length);
  figures->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  lines_->addWidget(figures, row, 1);
}

void SinceBackupView::colourWarning() {
  QPalette palette = sent_->palette();
  palette.setColor(QPalette::WindowText, Theme::colours(this->palette()).warning);
  sent_->setPalette(palette);
}

void SinceBackupView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) colourWarning();
}

}  // namespace pendra
