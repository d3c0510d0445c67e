#include "ComboBoxAccessible.h"

#include <QAbstractItemView>
#include <QLineEdit>

#include "ui/Accessibility.h"

namespace pendra {

namespace {

QAccessibleInterface* seenAs(const QString&, QObject* object) {
  auto* box = qobject_cast<QComboBox*>(object);
  return box ? new ComboBoxAccessible(box) : nullptr;
}

}  // namespace

void installComboBoxAccessibility() { QAccessible::installFactory(seenAs); }

QString ComboBoxAccessible::text(QAccessible::Text what) const {
  if (what == QAccessible::Value) return box()->currentText();
  const QString text = QAccessibleWidget::text(what);
  return what == QAccessible::Description && text.isEmpty() ? box()->currentText() : text;
}

QAccessible::State ComboBoxAccessible::state() const {
  QAccessible::State state = QAccessibleWidget::state();
  state.hasPopup = true;
  state.expandable = true;
  state.expanded = box()->view()->isVisible();
  state.collapsed = !state.expanded;
  state.editable = box()->isEditable();
  return state;
}

void* ComboBoxAccessible::interface_cast(QAccessible::InterfaceType type) {
  const bool asField = type == QAccessible::TextInterface || type == QAccessible::EditableTextInterface;
  if (!asField) return QAccessibleWidget::interface_cast(type);
  QAccessibleInterface* field = child(1);
  return field ? field->interface_cast(type) : nullptr;
}

QAccessibleInterface* ComboBoxAccessible::child(int index) const {
  if (index == 0) return QAccessible::queryAccessibleInterface(box()->view());
  return index == 1 ? QAccessible::queryAccessibleInterface(box()->lineEdit()) : nullptr;
}

int ComboBoxAccessible::indexOfChild(const QAccessibleInterface* child) const {
  if (child->object() == box()->view()) return 0;
  return box()->isEditable() && child->object() == box()->lineEdit() ? 1 : -1;
}

QAccessibleInterface* ComboBoxAccessible::childAt(int x, int y) const {
  QAccessibleInterface* field = child(1);
  return field && field->rect().contains(x, y) ? field : nullptr;
}

QStringList ComboBoxAccessible::actionNames() const {
  return {showMenuAction(), pressAction(), setFocusAction()};
}

void ComboBoxAccessible::doAction(const QString& name) {
  if (!actionNames().contains(name) || !box()->isEnabled()) return;
  if (name == setFocusAction()) return box()->setFocus(Qt::OtherFocusReason);
  if (box()->view()->isVisible()) {
    box()->hidePopup();
  } else {
    box()->showPopup();
  }
}

}  // namespace pendra
