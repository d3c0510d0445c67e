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
      column(QStringLiteral("totalduration"), QDialog::tr("Duration"), &SummaryLine::totalduration);
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
    : modals_(modals), mySummarySheet_(window), mySummaryController_(makeTable()) {
  build();
}

SendTimeSheet::~SendTimeSheet() = default;

void SendTimeSheet::build() {
  mySummarySheet_.setObjectName(QStringLiteral("mySummarySheet"));
  mySummarySheet_.setWindowTitle(QDialog::tr("Send Time"));
  mySummarySheet_.resize(640, 400);
  auto* words = new QLabel(QDialog::tr("This time will be sent to Vantor:"));
  auto* table = new RowTableView;
  table->setObjectName(QStringLiteral("mySummaryTable"));
  table->setAccessibleName(QDialog::tr("Summary"));
  table->setSource(*mySummaryController_);
  table->setEmptyState(QDialog::tr("Everything here has been sent."));
  QPushButton* cancel = makeSheetButton(QDialog::tr("Cancel"), &mySummarySheet_);
  QPushButton* send = makeSheetButton(QDialog::tr("Send"), &mySummarySheet_);
  send->setDefault(true);
  makePrimary(*send);
  QObject::connect(send, &QPushButton::clicked, &mySummarySheet_, [this] { finishSumitting(); });
  QObject::connect(cancel, &QPushButton::clicked, &mySummarySheet_, [this] { cancelSubmitting(); });
  // Escape and the close box end it, too.
  QObject::connect(&mySummarySheet_, &QDialog::finished, &modalSession_, &QEventLoop::exit);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(metrics::kGrid);
  buttons->addStretch();
  buttons->addWidget(cancel);
  buttons->addWidget(send);
  auto* column = new QVBoxLayout(&mySummarySheet_);
  column->setContentsMargins(metrics::kSide, metrics::kSide, metrics::kSide, metrics::kSide);
  column->setSpacing(metrics::kSide);
  column->addWidget(words);
  column->addWidget(table);
  column->addLayout(buttons);
}

int SendTimeSheet::runModal(const std::vector<SummaryLine>& lines) {
  mySummaryController_->setRows(lines);
  mySummarySheet_.findChild<RowTableView*>()->reloadData();
  mySummarySheet_.setWindowModality(Qt::ApplicationModal);
  mySummarySheet_.show();
  const ModalDepth::Run run(modals_);
  return modalSession_.exec(QEventLoop::DialogExec);
}

void SendTimeSheet::finishSumitting() {
  for (auto* button : mySummarySheet_.findChildren<QPushButton*>()) button->setEnabled(false);
  modalSession_.exit(SheetRunner::kAccepted);
}

}  // namespace pendra
