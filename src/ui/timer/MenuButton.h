#pragma once

#include <QAbstractButton>

namespace pendra {

/// Quiet words, or none, and the arrow that says that a press opens a menu below it. The arrow down opens it,
/// too.
class MenuButton final : public QAbstractButton {
  Q_OBJECT
 public:
  MenuButton(const QString& objectName, const QString& accessibleName);
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void enterEvent(QEnterEvent*) override { update(); }
  void leaveEvent(QEvent*) override { update(); }
};

}  // namespace pendra
