#pragma once

#include <QLineEdit>

namespace pendra {

class NameComboBox;

/// The text of a NameComboBox: sees the keys that change what is completed.
class NameEdit final : public QLineEdit {
  Q_OBJECT
 public:
  explicit NameEdit(NameComboBox& box);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool event(QEvent* event) override;

 private:
  NameComboBox& box_;
};

}  // namespace pendra
