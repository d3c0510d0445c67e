#pragma once

#include <QMenuBar>

#include "ui/CommandTarget.h"

namespace pendra {

/// The program's menu bar for one top-level window: made from the menu model, made again when that
/// changes, validated when a menu opens and again when an item is triggered.
class MenuBar final : public QMenuBar {
 public:
  /// The model and the target must outlive it.
  MenuBar(MenuModel& model, CommandTarget& target, QWidget* window);

 private:
  void rebuild();
  /// Adds the letter that it takes to `letters`.
  void addItem(QMenu& menu, const MenuItem& item, QSet<QChar>& letters);
  void whenFree(const std::function<void()>& act);
  void fillRecent(QMenu& menu);
  void fillWindows(QMenu& menu);
  void validate(const QMenu& menu);
  /// Outside an open menu every item is enabled, so that its shortcut asks the rules when it is pressed.
  void enableShortcuts(const QMenu& menu);

  MenuModel& model_;
  CommandTarget& target_;
  QWidget* window_;
  QHash<QAction*, MenuItem> items_;
  Notifier::Subscription modelChanges_;
};

}  // namespace pendra
