#include <QCheckBox>
#include <QDir>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "PreferencesPages.h"
#include "document/Restoring.h"
#include "model/DurationText.h"
#include "platform/Text.h"
#include "ui/Buttons.h"
#include "ui/CommandTarget.h"
#include "ui/RestoreWindow.h"
#include "ui/TabularText.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

QPushButton* button(const QString& name, const QString& title) {
  auto* made = new QPushButton(title);
  made->setObjectName(name);
  return made;
}

}  // namespace

BackupsPage::BackupsPage(const WindowFrame& frame)
    : PreferencePage(frame.session.ports().defaults), session_(frame.session) {
  addSwitch(
      preferences::kDailyBackups, tr("Make a backup on every day that changed something"),
      tr("Also before a restore, an upgrade and an update of the lists, whatever stands here. Kept: the "
         "last 10, one a day for 30 days, one a month after that."));
  column().addLayout(makeFolder(frame));
  column().addLayout(makeLast(frame));
  documents_ = session_.documentChanges().observe([this] { showLast(); });
  showFolder(true);
}

QHBoxLayout* BackupsPage::makeFolder(const WindowFrame& frame) {
  folder_ = new QLineEdit;
  folder_->setObjectName(preferences::kBackupFolder);
  folder_->setAccessibleName(tr("Backup folder"));
  folder_->setPlaceholderText(tr("Pendra’s own folder"));
  folder_->setToolTip(session_.ports().places.backupFolder());
  follow(preferences::kBackupFolder,
         [this] { folder_->setText(defaults().text(preferences::kBackupFolder).value_or(QString())); });
  remark_ = quietWords({});
  auto* words = new QLabel(tr("In"));
  words->setBuddy(folder_);
  QPushButton* choose = button(QStringLiteral("chooseFolder"), tr("Choose…"));
  QPushButton* show = button(QStringLiteral("showFolder"), tr("Show"));
  connect(folder_, &QLineEdit::editingFinished, this, [this] { takeFolder(); });
  connect(choose, &QPushButton::clicked, this, [this, &panels = frame.session.ports().panels] {
    const auto path = panels.runFolderPanel();
    if (!path) return;
    folder_->setText(*path);
    takeFolder();
  });
  connect(show, &QPushButton::clicked, this, [this] {
    const QString own = session_.document() ? backupFolderOf(session_) : QString();
    const QString chosen = defaults().text(preferences::kBackupFolder).value_or(QString());
    const QString root = chosen.isEmpty() ? session_.ports().places.backupFolder() : chosen;
    session_.ports().workspace.reveal(QFileInfo::exists(own) ? own : root);
  });
  auto* row = new QHBoxLayout;
  row->setSpacing(metrics::kGrid);
  row->addWidget(words);
  row->addWidget(folder_, 1);
  row->addWidget(choose);
  row->addWidget(show);
  auto* both = new QVBoxLayout;
  both->setContentsMargins(kUnderBox, 0, 0, 0);
  both->setSpacing(metrics::kGrid / 4);
  both->addLayout(row);
  both->addWidget(remark_);
  auto* moved = new QHBoxLayout;
  moved->addLayout(both);
  return moved;
}

void BackupsPage::takeFolder() {
  const QString path = folder_->text().trimmed();
  const bool isTaken = path.isEmpty() || (QDir::isAbsolutePath(path) && QFileInfo(path).isDir());
  if (isTaken && path != defaults().text(preferences::kBackupFolder).value_or(QString())) {
    defaults().setText(preferences::kBackupFolder, path.isEmpty() ? path : QDir::cleanPath(path));
    showLast();
  }
  showFolder(isTaken);
}

void BackupsPage::showFolder(bool isTaken) {
  folder_->setProperty(kUnreadableProperty, !isTaken);
  folder_->update();
  remark_->setText(isTaken ? tr("Each document has a folder of its own in it.")
                           : tr("There is no such folder. Backups go where they went before."));
  folder_->setAccessibleDescription(remark_->text());
}

QHBoxLayout* BackupsPage::makeLast(const WindowFrame& frame) {
  last_ = new QLabel;
  last_->setObjectName(QStringLiteral("lastBackup"));
  last_->setAccessibleName(tr("Last backup"));
  lastWords_ = quietWords({}, 0);
  lastWords_->setObjectName(QStringLiteral("lastBackupWords"));
  restore_ = button(QStringLiteral("restore"), tr("Restore…"));
  connect(restore_, &QPushButton::clicked, this,
          [this, &target = frame.target] { target.perform(Command::Restore, window()); });
  auto* words = new QVBoxLayout;
  words->setSpacing(metrics::kGrid / 4);
  words->addWidget(last_);
  words->addWidget(lastWords_);
  auto* row = new QHBoxLayout;
  row->setContentsMargins(kUnderBox, metrics::kGrid, 0, 0);
  row->addLayout(words, 1);
  row->addWidget(restore_);
  return row;
}

void BackupsPage::showEvent(QShowEvent* event) {
  PreferencePage::showEvent(event);
  showLast();
}

void BackupsPage::showLast() {
  if (!isVisible()) return;  // a folder on a slow disk is looked into when somebody looks
  restore_->setEnabled(session_.document() != nullptr);
  const auto backups = backupsOf(session_);
  const auto say = [this](const QString& sentence, const QString& words = {}) {
    showText(*last_, sentence);
    lastWords_->setText(words);
    lastWords_->setVisible(!words.isEmpty());
  };
  if (!session_.document()) return say(tr("No document is open."));
  if (backups.empty()) {
    return say(formatted(tr("There is no backup of “%@” yet."), {session_.document()->displayName()}));
  }
  const QString when = formatted(tr("Last backup: %@"), {backupTime(session_, backups.front().madeAt)});
  const auto sum = sumOf(backups.front());
  if (!sum) return say(when, formatted(tr("It cannot be read: %@"), {sum.error().text}));
  const QString hours = durationText(sum.value().seconds);
  say(when, sum.value().number == 1
                ? formatted(tr("1 entry, %@."), {hours})
                : formatted(tr("%@ entries, %@."), {QString::number(sum.value().number), hours}));
}

}  // namespace pendra
