#pragma once

#include <QLabel>

namespace pendra {

/// A label of the window that exposes its text to assistive technology as its description. Where it lacks
/// room it is cut with an ellipsis, and never makes the window wider.
class ShownText final : public QLabel {
 public:
  ShownText(const QString& objectName, const QString& accessibleName, const QFont& font);

  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace pendra
