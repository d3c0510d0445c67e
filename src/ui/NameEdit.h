#pragma once

#include <QLineEdit>

namespace pendra {

class NameComboBox;

/// The text of a NameComboBox: sees the keys and the loss of focus that would end its editing.
class NameEdit final : public QLineEdit {
  Q_OBJECT
 public:
  explicit NameEdit(NameComboBox& box);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  NameComboBox& box_;
  bool letGo_ = false;  ///< the question was answered with yes; the focus may go
};

}  // namespace pendra
