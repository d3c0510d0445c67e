#pragma once

#include <QWidget>

#include "ui_core/LogController.h"

class QLabel;

namespace pendra {

class TabularLabel;

/// "128 entries, 96:12:30": the count and the sum of the selected entries, or of all that are listed.
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
  Notifier::Subscription contents_;
};

}  // namespace pendra
