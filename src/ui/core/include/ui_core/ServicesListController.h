#pragma once

#include "model/Service.h"
#include "ui_core/ListController.h"
#include "ui_core/RowTable.h"

namespace pendra {

/// A row of the services' list.
struct ServicesListRow {
  Ref<Service> service;
};

/// The service items. Kept: simpler than the customers' list, and different from it on purpose: names may
/// occur twice, a new item is not numbered, and an item that is in use can be deleted.
class ServicesListController : public ListController {
 public:
  ServicesListController(Session& session, TablePort& table, ListView& view);

  [[nodiscard]] const RowTable<ServicesListRow>& rows() const { return rows_; }
  [[nodiscard]] TableSource& source() override { return rows_; }
  [[nodiscard]] const TableSource& source() const override { return rows_; }

  void addNewService();
  /// Kept: only in a standalone document, unlike the customers' list.
  void deleteRow() override;
  [[nodiscard]] bool validateMenuItem(ListCommand item) const override;

 protected:
  void reloadData() override;
  void documentEdited(const ChangeSet& changes) override;
  [[nodiscard]] bool takeName(int row, const QString& name) override;
  [[nodiscard]] QString nameInRow(int row) const override;
  void markShown(int row, bool shown) override;

 private:
  [[nodiscard]] Service* serviceForRow(int row) const;

  RowTable<ServicesListRow> rows_;
};

}  // namespace pendra
