#pragma once

#include <QMenuBar>
#include <QSet>

#include "ui/CommandTarget.h"

namespace pendra {

/// The program's menu bar for one top-level window: an action for each command, validated when its menu opens
/// and again when it is triggered.
class MenuBar final : public QMenuBar {
 public:
  /// The target must outlive it.
  MenuBar(CommandTarget& target, QWidget* window);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void addMenuOf(const Menu& each);
  void addAction(QMenu& menu, const CommandRow& row);
  void addList(QMenu& menu, MenuList list);
  void trigger(const CommandRow& row);
  void whenFree(const std::function<void()>& act);
  void fillRecent(QMenu& menu);
  void fillWindows(QMenu& menu);
  /// Titles and the letters that choose them, and what there is.
  void refresh(const QMenu& menu);
  void validate(const QMenu& menu);
  /// Outside an open menu an item is enabled, so that its shortcut asks the rules when it is pressed.
  void enableShortcuts(const QMenu& menu);
  void refreshAll();

  QSet<QChar> letters_;  ///< which open a menu, with Alt
  CommandTarget& target_;
  QWidget* window_;
  QHash<QAction*, const CommandRow*> rows_;
  Notifier::Subscription changes_;
};

}  // namespace pendra
