#pragma once

#include <QLabel>
#include <QWidget>
#include <vector>

#include "platform/Notifier.h"
#include "platform/Preferences.h"

class QCheckBox;
class QHBoxLayout;
class QLineEdit;
class QSpinBox;
class QVBoxLayout;

namespace pendra {

/// The width of what stands in a page.
inline constexpr int kPreferencesWidth = 472;
/// How far what belongs to a box is moved in.
inline constexpr int kUnderBox = 26;

/// Quiet words that break at `width`.
QLabel* quietWords(const QString& text, int width = kPreferencesWidth - kUnderBox);

/// A page of the preferences: lines, each a sentence that may hold fields, and below it a quiet line that
/// says what it does. Whatever is changed acts at once, and is shown by whatever page shows it.
class PreferencePage : public QWidget {
 public:
  explicit PreferencePage(UserDefaults& defaults);

 protected:
  /// A line whose sentence is a box of its own.
  QCheckBox* addSwitch(const preferences::Switch& preference, const QString& sentence,
                       const QString& explanation);
  /// A box for a sentence that goes on with fields; not in a line yet.
  QCheckBox* makeSwitch(const preferences::Switch& preference, const QString& sentence,
                        const QString& accessibleName);
  QSpinBox* makeNumber(const preferences::Number& preference, const QString& accessibleName);
  /// A text that is no time is marked and not taken.
  QLineEdit* makeTime(const preferences::TimeOfDay& preference, const QString& accessibleName);
  /// A line of a sentence and what stands below it.
  void addLine(const std::vector<QWidget*>& sentence, const std::vector<QWidget*>& below);
  /// Shows now and after every change of the preference.
  void follow(const QString& key, const std::function<void()>& show);

  [[nodiscard]] QVBoxLayout& column() { return *column_; }
  [[nodiscard]] UserDefaults& defaults() { return defaults_; }

 private:
  UserDefaults& defaults_;
  QVBoxLayout* column_;
  std::vector<Notifier::Subscription> observations_;
};

}  // namespace pendra
