#pragma once

#include <QLabel>
#include <QPushButton>

namespace pendra {

/// One sentence and at most one button, in the middle of a table without rows.
class EmptyState final : public QWidget {
  Q_OBJECT
 public:
  explicit EmptyState(QWidget* parent);
  void say(const QString& sentence, const QString& buttonTitle);
  [[nodiscard]] bool hasSomethingToSay() const { return !sentence_->text().isEmpty(); }
  [[nodiscard]] QPushButton& button() const { return *button_; }

 private:
  QLabel* sentence_;
  QPushButton* button_;
};

}  // namespace pendra
