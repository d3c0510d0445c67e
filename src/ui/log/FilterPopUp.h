#pragma once

#include <QComboBox>
#include <functional>

namespace pendra {

/// A pop-up that says what it filters by and to what: without a frame while all is shown, on a plate and in
/// bold once it leaves something out. Its first item stands for all, unless it says otherwise itself, or only
/// chooses how a thing is shown and leaves nothing out.
class FilterPopUp final : public QComboBox {
 public:
  enum class Purpose { Filters, Chooses };
  /// Without a title its values say what they are.
  explicit FilterPopUp(QString title, Purpose purpose = Purpose::Filters, QWidget* parent = nullptr);
  /// Says whether it leaves something out.
  void setLimits(std::function<bool()> limits) { limits_ = std::move(limits); }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] bool limits() const {
    return limits_ ? limits_() : purpose_ == Purpose::Filters && currentIndex() > 0;
  }
  [[nodiscard]] QString value() const;
  [[nodiscard]] QFont valueFont() const;
  [[nodiscard]] QSize sizeFor(int valueWidth) const;

  [[nodiscard]] int titleWidth() const;

  QString title_;
  Purpose purpose_;
  std::function<bool()> limits_;
};

}  // namespace pendra
