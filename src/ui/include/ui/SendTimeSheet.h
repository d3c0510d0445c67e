#pragma once

#include <QDialog>
#include <QEventLoop>
#include <memory>

#include "link/SubmissionRows.h"
#include "ui/SheetRunner.h"

namespace pendra {

template <class Row>
class RowTable;

/// "Send Time": the summary of what will be sent. Made anew for each sending, and it stays on the screen,
/// without its buttons, while the sending goes on.
class SendTimeSheet final : public SummarySheet {
 public:
  /// A sheet of `window`; both must outlive it.
  SendTimeSheet(ModalDepth& modals, QWidget* window);
  ~SendTimeSheet() override;

  [[nodiscard]] int run(const std::vector<SummaryLine>& lines) override;
  void close() override { sheet_.close(); }
  /// "Send" was pressed.
  void accept();

 private:
  void build();

  ModalDepth& modals_;
  QDialog sheet_;
  QEventLoop loop_;
  std::unique_ptr<RowTable<SummaryLine>> rows_;
};

}  // namespace pendra
