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
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  NameComboBox& box_;
};

}  // namespace pendra
