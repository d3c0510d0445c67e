#pragma once
// A combo box has a name, which says what is chosen, and a text, which says what was. Qt's own interface
// tells the text for both.

#include <QAccessibleWidget>
#include <QComboBox>

namespace pendra {

/// The accessible side of every combo box: its name is the widget's own, its value and description the text.
/// An editable one can be read and written like its field.
class ComboBoxAccessible final : public QAccessibleWidget {
 public:
  explicit ComboBoxAccessible(QComboBox* box) : QAccessibleWidget(box, QAccessible::ComboBox) {}

  [[nodiscard]] QString text(QAccessible::Text what) const override;
  [[nodiscard]] QAccessible::State state() const override;
  void* interface_cast(QAccessible::InterfaceType type) override;

  /// The list of choices and, in an editable box, the field.
  [[nodiscard]] int childCount() const override { return box()->isEditable() ? 2 : 1; }
  [[nodiscard]] QAccessibleInterface* child(int index) const override;
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
  [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;

  [[nodiscard]] QStringList actionNames() const override;
  void doAction(const QString& name) override;

 private:
  [[nodiscard]] QComboBox* box() const { return static_cast<QComboBox*>(object()); }
};

}  // namespace pendra
