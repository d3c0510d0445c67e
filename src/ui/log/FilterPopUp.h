#pragma once

#include <QComboBox>

namespace pendra {

/// A pop-up that says what it filters by and to what: without a frame while all is shown, on a plate and in
/// bold once it leaves something out. Its first item stands for all.
class FilterPopUp final : public QComboBox {
 public:
  explicit FilterPopUp(QString title, QWidget* parent = nullptr);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] bool limits() const { return currentIndex() > 0; }
  [[nodiscard]] QString value() const;
  [[nodiscard]] QFont valueFont() const;
  [[nodiscard]] QSize sizeFor(int valueWidth) const;

  QString title_;
};

}  // namespace pendra
