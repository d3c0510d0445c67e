#include "PreferencePage.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>

#include "ui/Buttons.h"
#include "ui/Labels.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kMargin = 3 * metrics::kGrid;
constexpr int kBetweenLines = 12;
constexpr int kNumberWidth = 48;
constexpr int kTimeWidth = 64;

QHBoxLayout* rowOf(const std::vector<QWidget*>& widgets) {
  auto* row = new QHBoxLayout;
  row->setSpacing(metrics::kGrid);
  for (QWidget* widget : widgets) row->addWidget(widget);
  row->addStretch();
  return row;
}

}  // namespace

QLabel* quietWords(const QString& text, int width) {
  return makeLabel(text, {.font = Theme::quietFont(), .isQuiet = true, .wraps = width > 0, .width = width});
}

PreferencePage::PreferencePage(UserDefaults& defaults) : defaults_(defaults), column_(new QVBoxLayout(this)) {
  column_->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  column_->setSpacing(kBetweenLines);
  column_->setAlignment(Qt::AlignTop);
  setFixedWidth(Theme::wide(kPreferencesWidth) + 2 * kMargin);
}

void PreferencePage::follow(const QString& key, const std::function<void()>& show) {
  show();
  observations_.push_back(defaults_.changesOf(key).observe(show));
}

void PreferencePage::addLine(const std::vector<QWidget*>& sentence, const std::vector<QWidget*>& below) {
  auto* line = new QVBoxLayout;
  line->setSpacing(metrics::kGrid / 4);
  line->addLayout(rowOf(sentence));
  QHBoxLayout* under = rowOf(below);
  under->setContentsMargins(kUnderBox, 0, 0, 0);
  line->addLayout(under);
  column_->addLayout(line);
}

QCheckBox* PreferencePage::addSwitch(const preferences::Switch& preference, const QString& sentence,
                                     const QString& explanation) {
  QCheckBox* box = makeSwitch(preference, sentence, sentence);
  box->setAccessibleDescription(explanation);
  addLine({box}, {quietWords(explanation)});
  return box;
}

QCheckBox* PreferencePage::makeSwitch(const preferences::Switch& preference, const QString& sentence,
                                      const QString& accessibleName) {
  auto* box = new QCheckBox(sentence);
  box->setObjectName(preference.key);
  box->setAccessibleName(accessibleName);
  follow(preference.key, [this, box, preference] {
    const QSignalBlocker silent(box);
    box->setChecked(preference.isOn(defaults_));
  });
  // Assistive technology toggles a box and does not click it.
  connect(box, &QCheckBox::toggled, this,
          [this, key = preference.key](bool checked) { defaults_.setBoolean(key, checked); });
  return box;
}

QSpinBox* PreferencePage::makeNumber(const preferences::Number& preference, const QString& accessibleName) {
  auto* number = new QSpinBox;
  number->setObjectName(preference.key);
  number->setAccessibleName(accessibleName);
  number->setRange(1, preference.most);
  number->setButtonSymbols(QAbstractSpinBox::NoButtons);  // the arrow keys count
  number->setFixedWidth(Theme::wide(kNumberWidth));
  follow(preference.key, [this, number, preference] {
    const QSignalBlocker silent(number);
    if (const int value = preference.of(defaults_); value > 0) number->setValue(value);
  });
  connect(number, &QSpinBox::valueChanged, this,
          [this, preference](int value) { preference.set(defaults_, value); });
  return number;
}

QLineEdit* PreferencePage::makeTime(const preferences::TimeOfDay& preference, const QString& accessibleName) {
  auto* field = new QLineEdit;
  field->setObjectName(preference.key);
  field->setAccessibleName(accessibleName);
  field->setFixedWidth(Theme::wide(kTimeWidth));
  follow(preference.key, [this, field, preference] {
    field->setText(preferences::TimeOfDay::textOf(preference.of(defaults_)));
  });
  const auto mark = [field](bool isRead) {
    field->setProperty(kUnreadableProperty, !isRead);
    field->setAccessibleDescription(isRead ? QString() : QWidget::tr("This is no time of day."));
    field->update();
  };
  connect(field, &QLineEdit::textChanged, this,
          [mark](const QString& text) { mark(preferences::TimeOfDay::read(text).isValid()); });
  connect(field, &QLineEdit::editingFinished, this, [this, field, preference] {
    const QTime time = preferences::TimeOfDay::read(field->text());
    if (!time.isValid() || time == preference.of(defaults_)) return;
    defaults_.setText(preference.key, preferences::TimeOfDay::textOf(time));
  });
  return field;
}

}  // namespace pendra
