#include "ui/RestoreWindow.h"

#include <QHBoxLayout>
#include <QLocale>
#include <QPushButton>
#include <QShortcut>

#include "BackupWindow.h"
#include "SinceBackupView.h"
#include "model/DurationText.h"
#include "platform/Preferences.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui/Buttons.h"
#include "ui/HelpPlace.h"
#include "ui/RowTableView.h"
#include "ui/Theme.h"
#include "ui_core/HelpAnchors.h"

namespace pendra {

namespace {

constexpr QSize kFirstSize(940, 480);

QString whyThereIsNone(const Session& session) {
  const QString& reason = session.document()->told.noBackup;
  if (!reason.isEmpty()) {
    return formatted(tr("No backup could be made in “%@”: %@."), {backupFolderOf(session), reason});
  }
  return preferences::kDailyBackups.isOn(session.ports().defaults)
             ? tr("The first backup is made today when you close.")
             : tr("Backups that make themselves are switched off in the preferences.");
}

}  // namespace

QString backupTime(const Session& session, Instant madeAt) {
  const Calendar& calendar = session.ports().calendar;
  const QDateTime made = calendar.local(madeAt);
  const QDate today = calendar.day(session.ports().clock.now());
  if (made.date() == today) {
    return formatted(QMainWindow::tr("Today, %@"), {QLocale().toString(made, QStringLiteral("HH:mm"))});
  }
  const bool isThisYear = made.date().year() == today.year();
  return QLocale().toString(
      made, isThisYear ? QStringLiteral("ddd d MMM, HH:mm") : QStringLiteral("ddd d MMM yyyy, HH:mm"));
}

std::vector<Column<RestoreWindow::Row>> RestoreWindow::columns(Session& session) {
  const auto figures = [](const QString& identifier, const QString& title, const QString& widest, auto text) {
    return Column<Row>{
        .head = {.identifier = identifier,
                 .title = title,
                 .alignment = Alignment::Right,
                 .kind = CellKind::Time,
                 .sortable = false,
                 .widest = {widest}},
        .text = [text](const Row& row) { return row.entries ? text(*row.entries) : QString(); }};
  };
  return {
      {.head = {.identifier = QStringLiteral("made"), .title = tr("Made"), .sortable = false, .weight = 3},
       .text = [&session](const Row& row) { return backupTime(session, row.file.madeAt); }},
      {.head = {.identifier = QStringLiteral("why"),
                .title = tr("Why"),
                .kind = CellKind::Secondary,
                .sortable = false,
                .weight = 3},
       .text = [](const Row& row) { return titleOf(row.file.reason); }},
      figures(QStringLiteral("entries"), tr("Entries"), QStringLiteral("000000"),
              [](const EntrySum& sum) { return QString::number(sum.number); }),
      figures(QStringLiteral("hours"), tr("Hours"), QStringLiteral("0000:00:00"),
              [](const EntrySum& sum) { return durationText(sum.seconds); })};
}

RestoreWindow::RestoreWindow(const WindowFrame& frame, OfferUndo offerUndo)
    : AppWindow(frame, tr("Restore")),
      session_(frame.session),
      offerUndo_(std::move(offerUndo)),
      rows_(columns(session_),
            {.identity = [](const Row& row) { return static_cast<quint64>(row.file.madeAt.seconds); }}) {
  setObjectName(QStringLiteral("restoreWindow"));
  setHelpAnchor(*this, help::kBackups);
  resize(kFirstSize);
  hideMenuBar();
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, [this] { close(); });
  auto* content = new QWidget;
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  auto* panes = new QHBoxLayout;
  panes->setSpacing(0);
  panes->addWidget(makeTable(), 1);
  side_ = new SinceBackupView;
  connect(side_, &SinceBackupView::showInFolder, this, [this] {
    if (chosen()) session_.ports().workspace.reveal(chosen()->file.path);
  });
  panes->addWidget(side_);
  column->addLayout(panes, 1);
  column->addWidget(makeButtons());
  setContent(content);
  lookUp_.setInterval(0);
  connect(&lookUp_, &QTimer::timeout, this, [this] { lookUpNext(); });
  again_.setSingleShot(true);
  connect(&again_, &QTimer::timeout, this, [this] { showSince(); });
  documents_ = session_.documentChanges().observe([this] { close(); });
  if (const auto context = session_.context()) {
    edits_ = context->observe([this](const ChangeSet&) { again_.start(0); });
  }
  listBackups();
}

RestoreWindow::~RestoreWindow() {
  table_->dropTable();  // the rows go before the view
}

QWidget* RestoreWindow::makeTable() {
  table_ = new RowTableView;
  table_->setObjectName(QStringLiteral("backups"));
  table_->setAccessibleName(tr("Backups"));
  table_->setSelectionMode(QAbstractItemView::SingleSelection);
  table_->setTable(rows_);
  table_->setEmptyState(whyThereIsNone(session_));
  connect(table_, &RowTableView::selectionChanged, this, [this] { showChosen(); });
  connect(table_, &RowTableView::rowActivated, this, [this] { lookInside(); });
  return table_;
}

QWidget* RestoreWindow::makeButtons() {
  const auto button = [](const QString& title, const QString& name) {
    auto* made = new QPushButton(title);
    made->setObjectName(name);
    made->setAccessibleName(title);
    made->setAutoDefault(true);
    return made;
  };
  look_ = button(tr("Look Inside"), QStringLiteral("lookInside"));
  auto* cancel = button(tr("Cancel"), QStringLiteral("cancel"));
  restore_ = button(tr("Restore…"), QStringLiteral("restore"));
  makePrimary(*restore_);
  connect(look_, &QPushButton::clicked, this, [this] { lookInside(); });
  connect(cancel, &QPushButton::clicked, this, [this] { close(); });
  connect(restore_, &QPushButton::clicked, this, [this] { restore(); });
  auto* bar = new QWidget;
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(metrics::kSide, metrics::kSide, metrics::kSide, metrics::kSide);
  row->setSpacing(metrics::kGrid);
  row->addWidget(look_);
  row->addStretch();
  row->addWidget(cancel);
  row->addWidget(restore_);
  return bar;
}

void RestoreWindow::listBackups() {
  std::vector<Row> rows;
  for (BackupFile& file : backupsOf(session_)) rows.push_back({.file = std::move(file), .entries = {}});
  const bool isEmpty = rows.empty();
  rows_.setRows(std::move(rows));
  for (QWidget* part :
       {static_cast<QWidget*>(side_), static_cast<QWidget*>(look_), static_cast<QWidget*>(restore_)}) {
    part->setVisible(!isEmpty);
  }
  lookUp_.start();
  if (!isEmpty) table_->selectRow(0);
}

/// One a turn of the event loop, so that hundreds keep nobody waiting.
void RestoreWindow::lookUpNext() {
  const auto next = rows_.indexOf([](const Row& row) { return !row.isLookedUp; });
  if (!next) return lookUp_.stop();
  Row row = *rows_.row(*next);
  if (const auto sum = sumOf(row.file)) row.entries = sum.value();
  row.isLookedUp = true;
  rows_.replaceRow(*next, std::move(row));
}

const RestoreWindow::Row* RestoreWindow::chosen() const { return rows_.row(table_->selectedRow()); }

void RestoreWindow::showChosen() {
  then_ = nullptr;
  if (const Row* row = chosen()) {
    const QString when = dayAndTime(row->file.madeAt, session_.ports().calendar);
    auto read = readBackup(session_, row->file.path);
    const auto entries = sumOf(row->file);
    if (read && entries) {
      then_ = std::move(read).value();
      side_->showBackup(when, entries.value());
    } else {
      side_->showDamage(when, read ? entries.error().text : read.error().text);
    }
  }
  for (QPushButton* button : {look_, restore_}) button->setEnabled(then_ != nullptr);
  showSince();
}

void RestoreWindow::showSince() {
  if (then_ && session_.document()) side_->showSince(changesSince(*then_, *session_.context()));
}

void RestoreWindow::lookInside() {
  if (!then_) return;
  if (inside_) inside_.release()->deleteLater();
  inside_ = std::make_unique<BackupWindow>(session_, then_, chosen()->file, [this] { restore(); });
  inside_->show();
  inside_->activateWindow();
}

void RestoreWindow::restore() {
  if (!then_ || session_.ports().modals.isModal()) return;
  const auto done = restoreFromBackup(session_, chosen()->file);
  if (!done) return listBackups();
  offerUndo_(*done);
  close();
}

}  // namespace pendra
