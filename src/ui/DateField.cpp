#include "ui/DateField.h"

#include "ui/Buttons.h"

namespace pendra {

DateField::DateField(QWidget* parent) : QLineEdit(parent) {
  connect(this, &QLineEdit::editingFinished, this, [this] { setUnreadable(!canRead()); });
  // While somebody types, a mark may go but none appears.
  connect(this, &QLineEdit::textChanged, this, [this] {
    if (!hasFocus() || canRead()) setUnreadable(!canRead());
  });
}

void DateField::setReader(Reader canRead) {
  reader_ = std::move(canRead);
  setUnreadable(!this->canRead());
}

bool DateField::isUnreadable() const { return property(kUnreadableProperty).toBool(); }

bool DateField::canRead() const { return text().isEmpty() || !reader_ || reader_(text()); }

void DateField::setUnreadable(bool unreadable) {
  if (unreadable == isUnreadable()) return;
  setProperty(kUnreadableProperty, unreadable);
  setToolTip(unreadable ? tr("This date cannot be read and limits nothing.") : QString());
  setAccessibleDescription(toolTip());
  update();
}

}  // namespace pendra
