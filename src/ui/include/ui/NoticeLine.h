#pragma once

#include <QFrame>
#include <vector>

#include "document/Notices.h"

class QHBoxLayout;
class QLabel;
class QPropertyAnimation;
class QPushButton;

namespace pendra {

/// The line under a window's header that says what is worth knowing, the newest notice first; the older ones
/// follow at a press. It takes room in the layout and never covers anything; it is hidden while there is
/// nothing to say.
class NoticeLine : public QFrame {
  Q_OBJECT
 public:
  enum class In { TimerWindow, OtherWindow };
  /// The notices must outlive it.
  explicit NoticeLine(Notices& notices, In where = In::OtherWindow, QWidget* parent = nullptr);
  /// What the line says now; empty when it says nothing.
  [[nodiscard]] QString text() const;

  /// As high as its words are at its width: layouts give no more than that.
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  static constexpr int kMostActions = 3;

  void showNewest();
  void showOlder();
  void showChosen();
  /// The notices for this window, the newest first.
  [[nodiscard]] std::vector<const Notice*> standing() const;
  void showButtons(const Notice& notice);
  void press(int action);
  void dismiss();
  void slideIn();
  [[nodiscard]] int gapAbove() const;
  void colourButtons();
  [[nodiscard]] QPushButton* newButton(QHBoxLayout& row);

  Notices& notices_;
  In where_;
  QLabel* words_;
  QPushButton* more_ = nullptr;
  std::vector<QPushButton*> actions_;
  QPushButton* dismiss_ = nullptr;
  QPropertyAnimation* slide_;
  QString key_;
  std::size_t back_ = 0;  ///< how many notices newer than the one in the line stand
  Notifier::Subscription changes_;
};

}  // namespace pendra
