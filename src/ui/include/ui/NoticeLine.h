#pragma once

#include <QFrame>
#include <vector>

#include "document/Notices.h"

class QHBoxLayout;
class QLabel;
class QPropertyAnimation;
class QPushButton;

namespace pendra {

/// The line under a window's header that says what is worth knowing, the newest notice first. It takes room
/// in the layout and never covers anything; it is hidden while there is nothing to say.
class NoticeLine : public QFrame {
  Q_OBJECT
 public:
  /// The notices must outlive it.
  explicit NoticeLine(Notices& notices, QWidget* parent = nullptr);
  /// What the line says now; empty when it says nothing.
  [[nodiscard]] QString text() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  static constexpr int kMostActions = 3;

  void showNewest();
  void showButtons(const Notice& notice);
  void press(int action);
  void dismiss();
  void slideIn();
  void colourButtons();
  [[nodiscard]] QPushButton* newButton(QHBoxLayout& row);

  Notices& notices_;
  QLabel* words_;
  QLabel* more_;
  std::vector<QPushButton*> actions_;
  QPushButton* dismiss_ = nullptr;
  QPropertyAnimation* slide_;
  QString key_;
  Notifier::Subscription changes_;
};

}  // namespace pendra
