#pragma once

#include <QWidget>
#include <functional>

#include "ui_core/LogController.h"

class QAbstractButton;
class QCheckBox;
class QComboBox;
class QHBoxLayout;
class QVBoxLayout;

namespace pendra {

class DateField;
class FilterPopUp;
class SearchField;

/// The log's filters in one row, and under it, when a date cannot be read, a sentence that says so. The logic
/// holds their state; the controls show it and pass on what a person chooses.
class LogFilterRow final : public QWidget {
 public:
  /// The logic must outlive it. `chosen` is told after each choice of the user's.
  LogFilterRow(LogController& log, UserDefaults& defaults, std::function<void()> chosen, QWidget* parent);

  [[nodiscard]] SearchField& search() { return *search_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  FilterPopUp* addPopUp(const QString& title, const QString& objectName, PopUp& popup);
  void addRange();
  void addClear();
  void addSearch();
  void addComplaint(QVBoxLayout& column);
  DateField* addDateField(const QString& title, const QString& objectName, QString& field);
  void addHideSubmitted(UserDefaults& defaults);
  void showWhatApplies();
  void choose(PopUp& popup, int index);
  void chooseRange(LogRange range);
  void takeDate(const QString& text, QString& field);
  void showFilters();
  void complain();
  void makeRoom();
  void searchNow();

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
  QHBoxLayout* row_ = nullptr;
  std::vector<ShownPopUp> popups_;
  std::vector<ShownDate> dates_;
  FilterPopUp* range_ = nullptr;
  QAbstractButton* clear_ = nullptr;
  SearchField* search_ = nullptr;
  QCheckBox* hideSubmitted_ = nullptr;
  QWidget* complaint_ = nullptr;  ///< hidden while every date can be read
  Notifier::Subscription filtersChanges_;
  Notifier::Subscription hideChanges_;
  std::vector<Notifier::Subscription> applies_;
};

}  // namespace pendra
