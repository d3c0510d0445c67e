#pragma once

#include <QDialog>
#include <QEventLoop>
#include <memory>

#include "link/Summary.h"
#include "ui/SheetRunner.h"

class QLabel;
class QPushButton;

namespace pendra {

template <class Row>
class RowTable;
class RowTableView;

/// "Send Time": the summary of what will be sent and of what stays behind. Made anew for each sending, and it
/// stays on the screen, without its buttons, while the sending goes on.
class SendTimeSheet final : public SummarySheet {
 public:
  /// A sheet of `window`; both must outlive it.
  SendTimeSheet(ModalDepth& modals, QWidget* window);
  ~SendTimeSheet() override;

  [[nodiscard]] bool run(const Summary& summary, const std::function<Summary()>& showAll) override;
  void close() override { sheet_.close(); }
  /// "Send" was pressed.
  void accept();

 private:
  void build();
  [[nodiscard]] QWidget* makeTable();
  [[nodiscard]] QWidget* makeLeftOut();
  [[nodiscard]] QLayout* makeButtons();
  void show(const Summary& summary);
  void showAll();

  ModalDepth& modals_;
  QDialog sheet_;
  QEventLoop loop_;
  std::unique_ptr<RowTable<SummaryLine>> rows_;
  std::function<Summary()> showAll_;
  RowTableView* table_ = nullptr;
  QWidget* leftOut_ = nullptr;
  QLabel* leftOutWords_ = nullptr;
  QLabel* remark_ = nullptr;
  QPushButton* send_ = nullptr;
};

}  // namespace pendra
