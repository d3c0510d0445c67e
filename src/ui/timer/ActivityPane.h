#pragma once

#include <QWidget>

#include "platform/Notifier.h"

class QLabel;
class QPushButton;

namespace pendra {

class RowTableView;
class SearchField;
class TimerState;

/// The activity table, the field that searches it, and below what was found how many are not shown.
class ActivityPane final : public QWidget {
  Q_OBJECT
 public:
  ActivityPane();

  [[nodiscard]] RowTableView& table() const { return *table_; }
  /// Stands elsewhere in the window.
  [[nodiscard]] SearchField& searchField() const { return *search_; }
  /// Searches the activities of this state, and shows what it lists.
  void follow(TimerState& state);

 Q_SIGNALS:
  /// The button of the empty table, while nothing is searched for.
  void addAsked();

 private:
  [[nodiscard]] QWidget* makeRest();
  void showListed();
  void showAll();

  RowTableView* table_;
  SearchField* search_;
  QLabel* leftOut_;
  QPushButton* showAll_;
  QWidget* rest_;  ///< the two above
  TimerState* state_ = nullptr;
  Notifier::Subscription listedChanges_;
};

}  // namespace pendra
