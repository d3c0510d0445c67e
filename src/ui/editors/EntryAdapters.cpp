#include "EntryAdapters.h"

#include "ui/Buttons.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

void fitToText(QLineEdit& field, const QString& longest) {
  constexpr int kEdges = 24;
  field.setFixedWidth(field.fontMetrics().horizontalAdvance(longest) + kEdges);
}

}  // namespace

void layOutEntry(EntryAdapters& entry) {
  fitToText(entry.startDateField.widget(), QStringLiteral("MM/DD/YYYY"));
  fitToText(entry.startTimeField.widget(), QStringLiteral("00:00 "));
  fitToText(entry.startTimeFieldAMPM.widget(), QStringLiteral("AM "));
  fitToText(entry.durationField.widget(), QStringLiteral("0000:00:00"));
}

void markUnreadable(QWidget& field, bool unreadable) {
  if (field.property(kUnreadableProperty).toBool() == unreadable) return;
  field.setProperty(kUnreadableProperty, unreadable);
  field.update();
}

void showAsSecondary(std::initializer_list<QWidget*> labels) {
  for (QWidget* label : labels) {
    label->setFont(Theme::quietFont());
    label->setForegroundRole(QPalette::PlaceholderText);
  }
}

}  // namespace pendra
