#pragma once

#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QTimer>
#include <functional>
#include <memory>

#include "platform/DesktopPanel.h"
#include "ui_core/PanelState.h"

namespace pendra {

/// The sign that the panel shows, told by its shape alone: a ring for no document, with a play sign in it
/// when nothing runs, a disc with a pause sign while time runs, a count on it for several timers, a diamond
/// while a question waits. For a dark panel or a light one, and seen on the other.
[[nodiscard]] QIcon panelIcon(const PanelSign& sign, bool isDark);

/// Pendra in the panel, for as long as there is one: sign, tip and menu.
class PanelIcon final : public QObject {
  Q_OBJECT

 public:
  /// What its menu does besides starting and stopping.
  struct Deeds {
    std::function<void()> quickEntry;
    std::function<void()> open;
    std::function<void()> quit;
  };
  /// Both must outlive it.
  PanelIcon(PanelState& state, DesktopPanel& panel, Deeds deeds);
  ~PanelIcon() override;

  [[nodiscard]] QMenu& menu() { return menu_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void followPanel();
  void show();
  void showTip();
  void aboutToShowMenu();
  void fillMenu();
  void showLengths();
  QAction* add(const QString& title, std::function<void()> deed);
  void addRunning(const RunningTimer& timer);
  [[nodiscard]] QIcon signOf(bool runs) const;

  PanelState& state_;
  DesktopPanel& panel_;
  Deeds deeds_;
  QMenu menu_;
  std::unique_ptr<QSystemTrayIcon> icon_;
  std::optional<PanelSign> shown_;
  QString refusal_;                                         ///< with which the menu was filled
  std::vector<std::pair<QAction*, RunningTimer>> lengths_;  ///< the items that show how long something runs
  QTimer tip_;                                              ///< goes while something runs
  QTimer seconds_;                                          ///< goes while the menu is open
  std::vector<Notifier::Subscription> observations_;
};

}  // namespace pendra
