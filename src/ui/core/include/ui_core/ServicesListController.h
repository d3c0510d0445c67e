#pragma once

#include "model/Service.h"
#include "ui_core/ListController.h"
#include "ui_core/RowTable.h"

namespace pendra {

/// A row of the services' list.
struct ServicesListRow {
  Ref<Service> service;
};

/// The service items. Kept: promised to those who keep the lists: other than with customers, names may occur
/// twice, a new item is not numbered, and an item that is in use can be deleted.
class ServicesListController : public ListController {
 public:
  ServicesListController(Session& session, ListView& view);

  [[nodiscard]] const RowTable<ServicesListRow>& rows() const { return rows_; }
  [[nodiscard]] TableModel& table() override { return rows_; }
  [[nodiscard]] const TableModel& table() const override { return rows_; }
  [[nodiscard]] TableSelection& selection() override { return selection_; }
  [[nodiscard]] const TableSelection& selection() const override { return selection_; }

  void addNewService();
  /// Kept: promised to those who keep the lists: only in a standalone document, unlike the customers' list.
  void deleteRow() override;

 protected:
  void rebuild() override { rows_.setRows(listedRows()); }
  void documentEdited(const ChangeSet& changes) override;
  [[nodiscard]] bool takeName(int row, const QString& name) override;
  [[nodiscard]] QString nameInRow(int row) const override;
  void markShown(int row, bool shown) override;

 private:
  [[nodiscard]] Service* serviceForRow(int row) const;

  [[nodiscard]] std::vector<ServicesListRow> listedRows() const;

  RowTable<ServicesListRow> rows_;
  TableSelection selection_{rows_};
};

}  // namespace pendra
