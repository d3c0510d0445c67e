#pragma once
// The window shows one report at a time: of its document, its query and now. Whatever changes one of the
// three has it made anew; nothing of it is kept up to date by hand.

#include "model/Report.h"
#include "store/Observers.h"
#include "ui/AppWindow.h"

namespace pendra {

class HoursChart;
class ReadOut;
class ReportHead;
struct ReportPaper;
class ReportTable;
class ReportTree;

/// Lists in the log what is in a bar: from one day to another, of one customer or of all.
using ShowInLog = std::function<void(QDate first, QDate last, const std::optional<QString>& customer)>;

/// "Report": the hours of a range as bars, and below them as a table with sums.
class ReportWindow final : public AppWindow {
  Q_OBJECT
 public:
  ReportWindow(const WindowFrame& frame, ShowInLog showInLog);
  ~ReportWindow() override;

  /// What is shown, for pictures and tests.
  void setQuery(const ReportQuery& query);
  /// The user has chosen another day with which weeks begin.
  void beginWeeksAnew();

 private:
  void followDocument();
  /// Makes the report anew and shows it.
  void refresh();
  void tick();
  void showReadOut();
  void pressBar(int bar);
  [[nodiscard]] ObjectContext* context() const;
  [[nodiscard]] QDate today() const;
  QWidget* makeContent();
  void addExports();
  [[nodiscard]] ReportPaper paper() const;

  Session& session_;
  ShowInLog showInLog_;
  ReportQuery query_;
  std::unique_ptr<ReportTree> tree_;
  ReportHead* head_ = nullptr;
  HoursChart* chart_ = nullptr;
  ReadOut* readOut_ = nullptr;
  ReportTable* table_ = nullptr;
  Subscription news_;
  std::vector<Notifier::Subscription> observations_;
};

}  // namespace pendra
