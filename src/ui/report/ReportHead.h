#pragma once

#include <QWidget>
#include <array>
#include <functional>

#include "ReportSum.h"
#include "model/Report.h"
#include "ui_core/LogRange.h"

class QHBoxLayout;
class QLabel;
class QPushButton;
class QRadioButton;

namespace pendra {

class DateField;
class FilterPopUp;

/// The report's range, sums and choices, above the bars. It shows a query and tells of another that a person
/// has chosen.
class ReportHead final : public QWidget {
  Q_OBJECT
 public:
  /// `days` says when and where dates are read.
  explicit ReportHead(std::function<DayReader()> days);

  void showQuery(const ReportQuery& query);
  /// The names that the customer filter offers.
  void showCustomers(const QStringList& names);
  void showSums(const Hours& all, bool linked);
  /// Puts a button at the right of the range's row.
  QPushButton* addButton(const QString& objectName, const QString& title);

 Q_SIGNALS:
  void queryChosen(const ReportQuery& query);

 private:
  QWidget* makeRangeRow();
  QWidget* makeSumsRow();
  void addRanges(QHBoxLayout& row);
  void addDates(QHBoxLayout& row);
  static FilterPopUp* addPopUp(QHBoxLayout& row, const QString& objectName, const QString& name,
                               FilterPopUp* popup);
  QPushButton* addStep(QHBoxLayout& row, const QString& objectName, const QString& name, int by);
  void chooseKind(RangeKind kind);
  void chooseDates();
  void choose(const ReportQuery& query);

  std::function<DayReader()> days_;
  ReportQuery query_;
  QHBoxLayout* rangeRow_ = nullptr;
  QLabel* title_ = nullptr;
  std::array<QRadioButton*, 5> kinds_{};
  QWidget* dates_ = nullptr;
  DateField* from_ = nullptr;
  DateField* to_ = nullptr;
  ReportSum* all_ = nullptr;
  ReportSum* sent_ = nullptr;
  ReportSum* notSent_ = nullptr;
  ReportSum* billable_ = nullptr;
  FilterPopUp* bars_ = nullptr;
  FilterPopUp* by_ = nullptr;
  FilterPopUp* customer_ = nullptr;
};

}  // namespace pendra
