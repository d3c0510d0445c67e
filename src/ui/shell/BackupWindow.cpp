#include "BackupWindow.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QShortcut>

#include "document/Session.h"
#include "model/DurationText.h"
#include "model/Queries.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui/HelpPlace.h"
#include "ui/NoticeLine.h"
#include "ui/RestoreWindow.h"
#include "ui/RowTableView.h"
#include "ui/Theme.h"
#include "ui/WindowTitle.h"
#include "ui_core/HelpAnchors.h"

namespace pendra {

namespace {

constexpr QSize kFirstSize(940, 480);

using Entry = const TimeEntry*;

Column<Entry> words(const QString& identifier, const QString& title, int weight,
                    std::function<QString(const Entry&)> text) {
  return {.head = {.identifier = identifier, .title = title, .weight = weight}, .text = std::move(text)};
}

/// A moment in this form, sorted by time.
Column<Entry> moment(const QString& identifier, const QString& title, const Calendar& calendar,
                     const QString& form) {
  return {.head = {.identifier = identifier,
                   .title = title,
                   .kind = CellKind::Time,
                   .widest = {QStringLiteral("Wed 30 Nov 2026")}},
          .text =
              [&calendar, form](const Entry& entry) {
                return entry->start() ? QLocale().toString(calendar.local(*entry->start()), form) : QString();
              },
          .time = [](const Entry& entry) { return entry->start(); }};
}

std::vector<Column<Entry>> columnsFor(const Calendar& calendar) {
  const auto nameOf = [](auto member) {
    return [member](const Entry& entry) {
      const Activity* activity = entry->activity();
      return activity ? queries::nameOf((activity->*member)()) : QString();
    };
  };
  const auto tr = [](const char* text) { return BackupWindow::tr(text); };
  Column<Entry> start = moment(QStringLiteral("start"), tr("Start"), calendar, QStringLiteral("HH:mm"));
  start.head.widest = {QStringLiteral("00:00")};
  start.head.sortable = false;
  Column<Entry> duration = words(QStringLiteral("duration"), tr("Duration"), 0,
                                 [](const Entry& entry) { return durationText(entry->storedDuration()); });
  duration.head.alignment = Alignment::Right;
  duration.head.kind = CellKind::Time;
  duration.head.widest = {QStringLiteral("0000:00:00")};
  return {words(QStringLiteral("customer"), tr("Customer"), 3, nameOf(&Activity::customer)),
          words(QStringLiteral("job"), tr("Job"), 2, nameOf(&Activity::job)),
          words(QStringLiteral("service"), tr("Service"), 2, nameOf(&Activity::service)),
          words(QStringLiteral("notes"), tr("Notes"), 3,
                [](const Entry& entry) { return entry->notes().value_or(QString()); }),
          moment(QStringLiteral("date"), tr("Date"), calendar, QStringLiteral("ddd d MMM yyyy")),
          std::move(start),
          std::move(duration)};
}

}  // namespace

BackupWindow::BackupWindow(const Session& session, std::shared_ptr<ObjectContext> context,
                           const BackupFile& backup, std::function<void()> restore)
    : context_(std::move(context)) {
  setObjectName(QStringLiteral("backupWindow"));
  setPlainTitle(*this, formatted(tr("%@ (backup of %@)"),
                                 {session.document()->displayName(), backupTime(session, backup.madeAt)}));
  setHelpAnchor(*this, help::kBackups);
  resize(kFirstSize);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(new NoticeLine(notices_));
  column->addWidget(makeTable(session.ports().calendar), 1);
  column->addWidget(makeFooter());
  sayWhatThisIs(std::move(restore));
  for (const QKeySequence& key : {QKeySequence(Qt::Key_Escape), QKeySequence(QKeySequence::Close)}) {
    connect(new QShortcut(key, this), &QShortcut::activated, this, [this] { close(); });
  }
  connect(new QShortcut(QKeySequence::Copy, this), &QShortcut::activated, this, [this] { copy(); });
}

BackupWindow::~BackupWindow() { table_->dropTable(); }

QWidget* BackupWindow::makeTable(const Calendar& calendar) {
  rows_ = std::make_unique<RowTable<Entry>>(columnsFor(calendar));
  table_ = new RowTableView;
  table_->setObjectName(QStringLiteral("entries"));
  table_->setAccessibleName(tr("Time log"));
  table_->setTable(*rows_);
  table_->setSortOrder({.key = QStringLiteral("date"), .ascending = false});
  const auto entries = context_->fetch<TimeEntry>();
  rows_->setRows({entries.begin(), entries.end()});
  return table_;
}

QWidget* BackupWindow::makeFooter() const {
  double seconds = 0;
  for (const TimeEntry* entry : context_->all<TimeEntry>()) seconds += entry->storedDuration();
  auto* sum = new QLabel(counted(std::ssize(context_->all<TimeEntry>()), "1 entry, %@", "%Ln entries, %@",
                                 {durationText(seconds)}));
  auto* only = new QLabel(tr("Read only"));
  only->setForegroundRole(QPalette::PlaceholderText);
  auto* footer = new QWidget;
  footer->setFixedHeight(metrics::kFooter);
  auto* row = new QHBoxLayout(footer);
  row->setContentsMargins(metrics::kSide, 0, metrics::kSide, 0);
  row->addWidget(sum, 1);
  row->addWidget(only);
  return footer;
}

void BackupWindow::sayWhatThisIs(std::function<void()> restore) {
  const auto stays = [] { return false; };
  notices_.post(
      {.key = QStringLiteral("inside"),
       .text = tr("This is a backup. You can look and copy; nothing here can be changed."),
       .actions = {{tr("Restore…"), std::move(restore), stays}, {tr("Close"), [this] { close(); }, stays}}});
}

/// The selected rows, a line each, with tabs between the columns.
void BackupWindow::copy() const {
  QStringList lines;
  for (const int row : table_->selectedRows()) {
    QStringList cells;
    for (int column = 0; column < rows_->columnCount(); ++column) cells << rows_->text(row, column);
    lines << cells.join(u'\t');
  }
  if (!lines.isEmpty()) QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

}  // namespace pendra
