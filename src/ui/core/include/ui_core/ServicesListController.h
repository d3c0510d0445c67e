#pragma once

#include "model/Service.h"
#include "ui_core/ListController.h"

namespace pendra {

/// A row of the services' list.
struct ServicesListRow {
  Ref<Service> service;
};

/// The service items. Kept: promised to those who keep the lists: other than with customers, names may occur
/// twice, a new item is not numbered, and an item that is in use can be deleted.
class ServicesListController : public ListOf<ServicesListRow> {
 public:
  ServicesListController(Session& session, ListView& view);

  void addNewService();
  /// Kept: promised to those who keep the lists: only in a standalone document, unlike the customers' list.
  void deleteRow() override;

 protected:
  [[nodiscard]] std::vector<ServicesListRow> listedRows() const override;
  void documentEdited(const ChangeSet& changes) override;
  [[nodiscard]] bool takeName(int row, const QString& name) override;
  [[nodiscard]] QString nameInRow(int row) const override;
  void markShown(int row, bool shown) override;

 private:
  [[nodiscard]] Service* serviceForRow(int row) const;
};

}  // namespace pendra
