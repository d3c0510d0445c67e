#pragma once

#include <QLabel>
#include <QPushButton>

namespace pendra {

/// One sentence and at most one button, in the middle of a table without rows; below them, where that helps
/// to begin, a quiet way to the help book.
class EmptyState final : public QWidget {
  Q_OBJECT
 public:
  explicit EmptyState(QWidget* parent);
  void say(const QString& sentence, const QString& buttonTitle, const QString& helpTitle);
  [[nodiscard]] bool hasSomethingToSay() const { return !sentence_->text().isEmpty(); }
  [[nodiscard]] QPushButton& button() const { return *button_; }
  [[nodiscard]] QPushButton& helpButton() const { return *helpButton_; }

 private:
  QLabel* sentence_;
  QPushButton* button_;
  QPushButton* helpButton_;
};

}  // namespace pendra
