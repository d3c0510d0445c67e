#pragma once

#include <QLineEdit>

namespace pendra {

/// The text of the quick entry. Knows which keys mean more than text, and leaves to others what they do.
class QuickEntryField final : public QLineEdit {
  Q_OBJECT
 public:
  explicit QuickEntryField(const QString& keyHint, QWidget* parent = nullptr);

 Q_SIGNALS:
  void focusChanged(bool isIn);
  /// By one completion, downwards or upwards.
  void moved(int by);
  /// Tab was pressed, which takes a completion where `taken` is set to true, and else goes on as ever.
  void tabbed(bool& taken);
  void entered();
  /// Escape was pressed. Whoever has nothing to close leaves `closed` as it is.
  void escaped(bool& closed);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QString keyHint_;
};

}  // namespace pendra
