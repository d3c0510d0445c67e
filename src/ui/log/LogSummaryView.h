#pragma once

#include <QWidget>

#include "ui_core/LogController.h"

class QLabel;
class QPushButton;

namespace pendra {

class TabularLabel;

/// "128 entries, 96:12:30": the count and the sum of the selected entries, or of all that are listed; and
/// what a search holds back.
class LogSummaryView final : public QWidget {
 public:
  /// The logic must outlive it.
  explicit LogSummaryView(LogController& log);

 private:
  void showSummary();

  LogController& log_;
  TabularLabel* count_;
  QLabel* noun_;
  TabularLabel* time_;
  QLabel* selected_;
  QLabel* hidden_;
  QPushButton* showAll_;
  Notifier::Subscription contents_;
};

}  // namespace pendra
