#include "ui/HelpPlace.h"

#include <QVariant>

#include "ui_core/HelpAnchors.h"

namespace pendra {

namespace {
constexpr const char* kProperty = "helpAnchor";
}

void setHelpAnchor(QWidget& widget, const QString& anchor) { widget.setProperty(kProperty, anchor); }

QString helpAnchorOf(const QWidget* widget) {
  for (; widget; widget = widget->parentWidget()) {
    if (QString anchor = widget->property(kProperty).toString(); !anchor.isEmpty()) return anchor;
  }
  return help::kTimerWindow;
}

}  // namespace pendra
