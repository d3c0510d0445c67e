#pragma once

#include <QWidget>
#include <functional>

#include "ui_core/LogController.h"

class QCheckBox;
class QComboBox;
class QHBoxLayout;

namespace pendra {

class DateField;

/// The log's filters in one row. The logic holds their state; the controls show it and pass on what a person
/// chooses.
class LogFilterRow final : public QWidget {
 public:
  /// The logic must outlive it. `chosen` is told after each choice of the user's.
  LogFilterRow(LogController& log, UserDefaults& defaults, std::function<void()> chosen, QWidget* parent);

 private:
  QComboBox* addPopUp(const QString& title, const QString& objectName, PopUp& popup);
  DateField* addDateField(const QString& title, const QString& objectName, QString& field);
  void addHideSubmitted(UserDefaults& defaults);
  void choose(PopUp& popup, int index);
  void takeDate(const QString& text, QString& field);
  void showFilters();

  struct ShownPopUp {
    QComboBox* control;
    const PopUp* state;
  };
  struct ShownDate {
    DateField* control;
    const QString* state;
  };

  LogController& log_;
  std::function<void()> chosen_;
  QHBoxLayout* row_;
  std::vector<ShownPopUp> popups_;
  std::vector<ShownDate> dates_;
  QCheckBox* hideSubmitted_ = nullptr;
  Notifier::Subscription filtersChanges_;
  Notifier::Subscription hideChanges_;
};

}  // namespace pendra
