#include "ui/SendTimeSheet.h"

#include <QLabel>
#include <QVBoxLayout>

#include "ui/Buttons.h"
#include "ui/RowTableView.h"
#include "ui/Theme.h"
#include "ui_core/RowTable.h"

namespace pendra {

namespace {

std::unique_ptr<RowTable<SummaryLine>> makeTable() {
  using Lines = std::vector<Column<SummaryLine>>;
  const auto column = [](const QString& identifier, const QString& title, QString SummaryLine::*text) {
    return Column<SummaryLine>{.head = {.identifier = identifier, .title = title, .weight = 2},
                               .text = [text](const SummaryLine& line) { return line.*text; }};
  };
  Column<SummaryLine> duration =
      column(QStringLiteral("totalduration"), QDialog::tr("Duration"), &SummaryLine::duration);
  duration.head.alignment = Alignment::Right;
  duration.head.kind = CellKind::Time;
  duration.head.weight = 0;
  duration.head.widest = {QStringLiteral("0000:00:00")};
  return std::make_unique<RowTable<SummaryLine>>(
      Lines{column(QStringLiteral("customer"), QDialog::tr("Customer"), &SummaryLine::customer),
            column(QStringLiteral("job"), QDialog::tr("Job"), &SummaryLine::job),
            column(QStringLiteral("service"), QDialog::tr("Service"), &SummaryLine::service), duration});
}

}  // namespace

SendTimeSheet::SendTimeSheet(ModalDepth& modals, QWidget* window)
    : modals_(modals), sheet_(window), rows_(makeTable()) {
  build();
}

SendTimeSheet::~SendTimeSheet() = default;

void SendTimeSheet::build() {
  sheet_.setObjectName(QStringLiteral("sheet"));
  sheet_.setWindowTitle(QDialog::tr("Send Time"));
  sheet_.resize(640, 400);
  auto* words = new QLabel(QDialog::tr("This time will be sent to Vantor:"));
  auto* table = new RowTableView;
  table->setObjectName(QStringLiteral("table"));
  table->setAccessibleName(QDialog::tr("Summary"));
  table->setSource(*rows_);
  table->setEmptyState(QDialog::tr("Everything here has been sent."));
  QPushButton* cancel = makeSheetButton(QDialog::tr("Cancel"), &sheet_);
  QPushButton* send = makeSheetButton(QDialog::tr("Send"), &sheet_);
  send->setDefault(true);
  makePrimary(*send);
  QObject::connect(send, &QPushButton::clicked, &sheet_, [this] { accept(); });
  QObject::connect(cancel, &QPushButton::clicked, &sheet_, [this] { sheet_.done(SheetRunner::kCancelled); });
  // Escape and the close box end it, too.
  QObject::connect(&sheet_, &QDialog::finished, &loop_, &QEventLoop::exit);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(metrics::kGrid);
  buttons->addStretch();
  buttons->addWidget(cancel);
  buttons->addWidget(send);
  auto* column = new QVBoxLayout(&sheet_);
  column->setContentsMargins(metrics::kSide, metrics::kSide, metrics::kSide, metrics::kSide);
  column->setSpacing(metrics::kSide);
  column->addWidget(words);
  column->addWidget(table);
  column->addLayout(buttons);
}

int SendTimeSheet::run(const std::vector<SummaryLine>& lines) {
  rows_->setRows(lines);
  sheet_.findChild<RowTableView*>()->reloadData();
  sheet_.setWindowModality(Qt::ApplicationModal);
  sheet_.show();
  const ModalDepth::Run run(modals_);
  return loop_.exec(QEventLoop::DialogExec);
}

void SendTimeSheet::accept() {
  for (auto* button : sheet_.findChildren<QPushButton*>()) button->setEnabled(false);
  loop_.exit(SheetRunner::kAccepted);
}

}  // namespace pendra
