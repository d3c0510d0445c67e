#include "ui/Labels.h"

#include <QLabel>

#include "ui/Theme.h"

namespace pendra {

QLabel* makeLabel(const QString& text, const LabelLook& look) {
  auto* label = new QLabel(text);
  label->setObjectName(look.objectName);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(look.wraps);
  label->setBuddy(look.of);
  if (look.font) label->setFont(*look.font);
  if (look.isQuiet) label->setForegroundRole(QPalette::PlaceholderText);
  if (look.width > 0) label->setFixedWidth(Theme::wide(look.width));
  return label;
}

}  // namespace pendra
