#include "ui/SendTimeSheet.h"

#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include "ui/AccessKeys.h"
#include "ui/Buttons.h"
#include "ui/HelpPlace.h"
#include "ui/RowTableView.h"
#include "ui/Theme.h"
#include "ui_core/HelpAnchors.h"
#include "ui_core/RowTable.h"

namespace pendra {

namespace {

constexpr int kRowOfTwoLines = 46;

std::unique_ptr<RowTable<SummaryLine>> makeRows() {
  using Lines = std::vector<Column<SummaryLine>>;
  const auto column = [](const QString& identifier, const QString& title, QString SummaryLine::*text) {
    return Column<SummaryLine>{
        .head = {.identifier = identifier, .title = title, .sortable = false, .weight = 2},
        .text = [text](const SummaryLine& line) { return line.*text; }};
  };
  Column<SummaryLine> days =
      column(QStringLiteral("days"), QDialog::tr("Days and notes"), &SummaryLine::days);
  days.head.kind = CellKind::TwoLines;
  days.head.weight = 3;
  days.text = [](const SummaryLine& line) {
    QStringList lines{line.days, line.notes};
    lines.removeAll(QString());
    return lines.join(u'\n');
  };
  Column<SummaryLine> customer =
      column(QStringLiteral("customer"), QDialog::tr("Customer"), &SummaryLine::customer);
  customer.head.weight = 3;
  Column<SummaryLine> duration =
      column(QStringLiteral("totalduration"), QDialog::tr("Duration"), &SummaryLine::duration);
  duration.head.alignment = Alignment::Right;
  duration.head.kind = CellKind::Time;
  duration.head.weight = 0;
  duration.head.widest = {QStringLiteral("0000:00:00")};
  Lines columns{customer, column(QStringLiteral("job"), QDialog::tr("Job"), &SummaryLine::job),
                column(QStringLiteral("service"), QDialog::tr("Service"), &SummaryLine::service), days,
                duration};
  return std::make_unique<RowTable<SummaryLine>>(
      std::move(columns), RowTraits<SummaryLine>{.sum = [](const SummaryLine& line) { return line.isSum; }});
}

/// A plate in the colours of a notice.
class NoticePlate final : public QWidget {
 protected:
  void paintEvent(QPaintEvent*) override {
    const Colours& colours = Theme::colours(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(colours.noticeLine);
    painter.setBrush(colours.noticeBack);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), metrics::kRadius,
                            metrics::kRadius);
  }
};

void write(QLabel& label, const QString& text) {
  label.setText(text);
  label.setAccessibleDescription(text);
}

}  // namespace

SendTimeSheet::SendTimeSheet(ModalDepth& modals, QWidget* window)
    : modals_(modals), sheet_(window), rows_(makeRows()) {
  build();
}

SendTimeSheet::~SendTimeSheet() = default;

void SendTimeSheet::build() {
  sheet_.setObjectName(QStringLiteral("sheet"));
  setHelpAnchor(sheet_, help::kSendTime);
  sheet_.setWindowTitle(QDialog::tr("Send Time"));
  sheet_.resize(720, 420);
  // Escape and the close box end it, too.
  QObject::connect(&sheet_, &QDialog::finished, &loop_, &QEventLoop::exit);
  auto* column = new QVBoxLayout(&sheet_);
  column->setContentsMargins(metrics::kSide, metrics::kSide, metrics::kSide, metrics::kSide);
  column->setSpacing(metrics::kSide);
  column->addWidget(new QLabel(QDialog::tr("This time will be sent to Vantor:")));
  column->addWidget(makeLeftOut());
  column->addWidget(makeTable());
  column->addLayout(makeButtons());
}

QWidget* SendTimeSheet::makeTable() {
  table_ = new RowTableView;
  table_->setObjectName(QStringLiteral("table"));
  table_->setAccessibleName(QDialog::tr("Summary"));
  table_->setTable(*rows_);
  table_->verticalHeader()->setDefaultSectionSize(kRowOfTwoLines);
  QObject::connect(table_, &RowTableView::emptyButtonClicked, &sheet_, [this] { showAll(); });
  return table_;
}

QWidget* SendTimeSheet::makeLeftOut() {
  leftOut_ = new NoticePlate;
  leftOutWords_ = new QLabel;
  leftOutWords_->setObjectName(QStringLiteral("leftOut"));
  leftOutWords_->setAccessibleName(QDialog::tr("Left out"));
  leftOutWords_->setWordWrap(true);
  auto* button = makeSheetButton(QDialog::tr("Show All"), &sheet_);
  button->setObjectName(QStringLiteral("showAll"));
  button->setShortcut(Qt::ALT | Qt::Key_A);
  makeQuiet(*button);
  QFont font = button->font();
  font.setWeight(QFont::DemiBold);
  button->setFont(font);
  for (QWidget* one : {static_cast<QWidget*>(leftOutWords_), static_cast<QWidget*>(button)}) {
    QPalette palette = one->palette();
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Link})
      palette.setColor(role, Theme::colours(palette).notice);
    one->setPalette(palette);
  }
  QObject::connect(button, &QPushButton::clicked, &sheet_, [this] { showAll(); });
  auto* row = new QHBoxLayout(leftOut_);
  row->setContentsMargins(metrics::kSide, metrics::kGrid / 2, metrics::kGrid, metrics::kGrid / 2);
  row->addWidget(leftOutWords_, 1);
  row->addWidget(button);
  return leftOut_;
}

QLayout* SendTimeSheet::makeButtons() {
  remark_ = new QLabel;
  remark_->setObjectName(QStringLiteral("remark"));
  remark_->setForegroundRole(QPalette::PlaceholderText);
  QPushButton* cancel = makeSheetButton(QDialog::tr("Cancel"), &sheet_);
  send_ = makeSheetButton(QDialog::tr("Send"), &sheet_);
  send_->setDefault(true);
  makePrimary(*send_);
  QObject::connect(send_, &QPushButton::clicked, &sheet_, [this] { accept(); });
  QObject::connect(cancel, &QPushButton::clicked, &sheet_, [this] { sheet_.done(SheetRunner::kCancelled); });
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(metrics::kGrid);
  buttons->addWidget(remark_, 1);
  buttons->addWidget(cancel);
  buttons->addWidget(send_);
  return buttons;
}

void SendTimeSheet::show(const Summary& summary) {
  rows_->setRows(summary.lines);
  const bool isEmpty = summary.lines.empty();
  table_->setEmptyState(summary.leftOut, summary.canShowAll ? QDialog::tr("Show All") : QString());
  leftOut_->setVisible(!isEmpty && !summary.leftOut.isEmpty());
  write(*leftOutWords_, isEmpty ? QString() : summary.leftOut);
  write(*remark_, summary.remark);
  send_->setEnabled(!isEmpty);
}

void SendTimeSheet::showAll() { show(showAll_()); }

bool SendTimeSheet::run(const Summary& summary, const std::function<Summary()>& showAll) {
  showAll_ = showAll;
  show(summary);
  giveAccessKeys(sheet_);
  sheet_.setWindowModality(Qt::ApplicationModal);
  sheet_.show();
  const ModalDepth::Run run(modals_);
  return loop_.exec(QEventLoop::DialogExec) == SheetRunner::kAccepted;
}

void SendTimeSheet::accept() {
  for (auto* button : sheet_.findChildren<QPushButton*>()) button->setEnabled(false);
  loop_.exit(SheetRunner::kAccepted);
}

}  // namespace pendra
