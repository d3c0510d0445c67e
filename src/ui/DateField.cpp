#include "ui/DateField.h"

#include <QPainter>

#include "ui/Buttons.h"
#include "ui/Symbols.h"
#include "ui/Theme.h"

namespace pendra {

namespace {
constexpr int kSign = 18;  // the width kept free for the sign
}

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
  setTextMargins(0, 0, unreadable ? kSign : 0, 0);
  update();
}

/// The mark is a sign as well as a colour.
void DateField::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  if (!isUnreadable()) return;
  QPainter painter(this);
  QRectF sign(0, 0, kSign - metrics::kGrid / 2, kSign - metrics::kGrid / 2);
  sign.moveCenter({width() - kSign * 0.75, height() / 2.0});
  drawSymbol(painter, sign, Symbol::Warning, Theme::colours(palette()).warning);
}

}  // namespace pendra
