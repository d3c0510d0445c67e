#pragma once

#include <QWidget>

namespace pendra {

inline constexpr int kFooterHeight = 247;

/// The footer of the timer window. It fills the view that contains it and is never lower than a height of its
/// own: in a window too small for it, it is cut off at the top.
class FooterView : public QWidget {
  Q_OBJECT
 public:
  explicit FooterView(QWidget* container);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace pendra
