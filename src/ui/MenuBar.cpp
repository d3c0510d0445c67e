#include "ui/MenuBar.h"

#include <QApplication>
#include <QFileInfo>
#include <QMenu>
#include <QTimer>

#include "platform/Translation.h"
#include "ui/AccessKeys.h"
#include "ui/FrontWindow.h"
#include "ui/MenuReasons.h"
#include "ui_core/HelpAnchors.h"

namespace pendra {

namespace {

/// Longer than a button that is pressed for somebody stays down.
constexpr std::chrono::milliseconds kClosingTime{300};

QList<QKeySequence> sequences(const QStringList& keys) {
  QList<QKeySequence> all;
  for (const QString& key : keys) all << QKeySequence(key);
  return all;
}

}  // namespace

MenuBar::MenuBar(CommandTarget& target, QWidget* window)
    : QMenuBar(window), target_(target), window_(window) {
  setNativeMenuBar(false);
  for (const Menu& each : target.menus()) addMenuOf(each);
  changes_ = target.menuChanges().observe([this] { refreshAll(); });
  window->installEventFilter(this);
  refreshAll();
}

void MenuBar::refreshAll() {
  for (const QAction* menu : actions()) {
    refresh(*menu->menu());
    enableShortcuts(*menu->menu());
  }
}

/// A window that comes back from under a sheet may do again what it was not allowed to do meanwhile.
bool MenuBar::eventFilter(QObject* watched, QEvent* event) {
  if (watched == window_ && event->type() == QEvent::WindowActivate) refreshAll();
  return QMenuBar::eventFilter(watched, event);
}

void MenuBar::addMenuOf(const Menu& each) {
  QMenu* menu = addMenu(withAccessKey(tr(each.title), letters_));
  for (const CommandRow& row : each.rows) {
    addAction(*menu, row);
    if (each.list != MenuList::None && row.command == each.listAfter) addList(*menu, each.list);
  }
  showReasons(*menu);
  connect(menu, &QMenu::aboutToShow, this, [this, menu] {
    refresh(*menu);
    validate(*menu);
  });
  connect(menu, &QMenu::aboutToHide, this, [this, menu] { enableShortcuts(*menu); });
}

void MenuBar::addAction(QMenu& menu, const CommandRow& row) {
  if (row.startsGroup) menu.addSeparator();
  QAction* action = menu.addAction(QString());
  action->setShortcuts(sequences(keysOf(row)));
  action->setMenuRole(QAction::NoRole);
  action->setProperty("helpAnchor", help::anchorOfItem(row.tag, QString::fromUtf8(row.title)));
  connect(action, &QAction::triggered, this, [this, &row] { trigger(row); });
  rows_.insert(action, &row);
}

void MenuBar::addList(QMenu& menu, MenuList list) {
  if (list == MenuList::OpenWindows) {
    connect(&menu, &QMenu::aboutToShow, this, [this, &menu] { fillWindows(menu); });
    return;
  }
  const QString title = QString::fromUtf8(kOpenRecentTitle);
  QMenu* recent = menu.addMenu(tr(kOpenRecentTitle));
  recent->menuAction()->setProperty("helpAnchor", help::anchorOfItem(0, title));
  connect(recent, &QMenu::aboutToShow, this, [this, recent] { fillRecent(*recent); });
  fillRecent(*recent);
}

void MenuBar::trigger(const CommandRow& row) {
  whenFree([this, &row] { target_.perform(row.command, window_); });
}

void MenuBar::refresh(const QMenu& menu) {
  QSet<QChar> letters;
  for (QAction* action : menu.actions()) {
    if (action->menu()) {
      action->setText(withAccessKey(QString(action->text()).remove(u'&'), letters));
    } else if (const CommandRow* row = rows_.value(action)) {
      action->setText(withAccessKey(target_.titleOf(*row), letters));
      action->setVisible(target_.isShown(*row));
      showIsOn(*action, target_.isOn(*row));
    }
  }
}

/// Assistive technology reaches what mouse and keyboard cannot reach. A sheet may be about to close, because
/// its button takes a moment to be released; while one stays, its window does nothing else.
void MenuBar::whenFree(const std::function<void()>& act) {
  if (!isBlocked(*window_)) return act();
  QTimer::singleShot(kClosingTime, this, [this, act] {
    if (!isBlocked(*window_)) act();
  });
}

void MenuBar::validate(const QMenu& menu) {
  for (QAction* action : menu.actions()) {
    const CommandRow* row = rows_.value(action);
    if (!row) continue;
    action->setEnabled(target_.isOffered(*row));
    giveReason(*action, target_.whyNot(*row));
  }
}

void MenuBar::enableShortcuts(const QMenu& menu) {
  for (QAction* action : menu.actions()) {
    if (const CommandRow* row = rows_.value(action)) {
      action->setEnabled(!row->showsState || target_.isOffered(*row));
    }
  }
}

void MenuBar::fillRecent(QMenu& menu) {
  menu.clear();
  for (const QString& path : target_.recentDocuments()) {
    const QFileInfo file(path);
    const bool isBackup = file.suffix() == u"pdrbackup";
    const QString name = withoutAccessKey(file.completeBaseName());
    QAction* action = menu.addAction(isBackup ? tr("%1 (backup)").arg(name) : name);
    action->setToolTip(path);
    connect(action, &QAction::triggered, this,
            [this, path] { whenFree([this, path] { target_.openRecent(path); }); });
  }
  if (menu.isEmpty()) {
    menu.addAction(tr("No recent documents"))->setEnabled(false);
    return;
  }
  menu.addSeparator();
  connect(menu.addAction(tr("Clear Menu")), &QAction::triggered, this, [this] { target_.clearRecent(); });
}

/// What a window is called: its title may say for a moment what it shows.
static QString nameOf(const QWidget& window) {
  return window.accessibleName().isEmpty() ? window.windowTitle() : window.accessibleName();
}

void MenuBar::fillWindows(QMenu& menu) {
  // The first item is the timer window; below it stand the windows that are open at this moment.
  const QList<QAction*> stale = menu.actions().mid(1);
  qDeleteAll(stale);
  menu.addSeparator();
  QWidgetList windows = QApplication::topLevelWidgets();
  std::sort(windows.begin(), windows.end(), [](const QWidget* one, const QWidget* other) {
    return nameOf(*one).localeAwareCompare(nameOf(*other)) < 0;
  });
  for (QWidget* window : std::as_const(windows)) {
    if (!window->isWindow() || !window->isVisible() || window->windowTitle().isEmpty()) continue;
    if (window->windowType() == Qt::Popup || window->windowType() == Qt::ToolTip) continue;
    QAction* action = menu.addAction(withoutAccessKey(nameOf(*window)));
    action->setCheckable(true);
    action->setChecked(window == window_);
    connect(action, &QAction::triggered, window, [window] {
      window->raise();
      window->activateWindow();
    });
  }
}

}  // namespace pendra
