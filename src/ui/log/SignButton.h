#pragma once

#include <QAbstractButton>
#include <QLabel>

#include "ui/Symbols.h"

namespace pendra {

/// A small button that is a sign and nothing else, without a frame.
class SignButton final : public QAbstractButton {
 public:
  explicit SignButton(Symbol symbol, QWidget* parent = nullptr);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Symbol symbol_;
};

/// The sign of a warning before its words.
class SignLabel final : public QWidget {
 public:
  explicit SignLabel(Symbol symbol, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Symbol symbol_;
};

}  // namespace pendra
