#pragma once

#include <QDialog>
#include <memory>

#include "link/SubmissionRows.h"
#include "ui/SheetRunner.h"

namespace pendra {

template <class Row>
class RowTable;

/// "Send Time": the summary of what will be sent. Made anew for each sending.
class SendTimeSheet final : public SummarySheet {
 public:
  /// A sheet of `window`; both must outlive it.
  SendTimeSheet(ModalDepth& modals, QWidget* window);
  ~SendTimeSheet() override;

  [[nodiscard]] int runModal(const std::vector<SummaryLine>& lines) override;
  void close() override { mySummarySheet_.close(); }
  /// "Send" was pressed.
  void finishSumitting() { mySummarySheet_.done(SheetRunner::kAccepted); }
  void cancelSubmitting() { mySummarySheet_.done(SheetRunner::kCancelled); }

 private:
  void build();

  SheetRunner runner_;
  QDialog mySummarySheet_;
  std::unique_ptr<RowTable<SummaryLine>> mySummaryController_;
};

}  // namespace pendra
