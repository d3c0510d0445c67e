#pragma once
// A row shows a customer or a job, for good: a job row whose job was deleted elsewhere is still no customer's
// row, and nothing that is done to it reaches anybody.

#include "model/Customer.h"
#include "model/Job.h"
#include "ui_core/ListController.h"
#include "ui_core/RowTable.h"

namespace pendra {

/// A row of the customer list, a snapshot taken at reload.
struct CustomerListRow {
  bool isJob = false;
  QString name;            ///< "customerName" of a customer's row, "jobName" of a job's
  bool checkbox = false;   ///< whether it is offered in the pick lists
  Ref<Customer> customer;  ///< the customer, or the job's customer
  Ref<Job> job;
};

/// The customers with their jobs as one flat list.
class CustomerListController : public ListController {
 public:
  CustomerListController(Session& session, TablePort& table, ListView& view);

  [[nodiscard]] const RowTable<CustomerListRow>& rows() const { return rows_; }
  [[nodiscard]] TableSource& source() override { return rows_; }
  [[nodiscard]] const TableSource& source() const override { return rows_; }

  /// By name; of several customers of one name only the first is listed. A search finds customers by their
  /// own name and by their jobs', and lists a found customer with all its jobs.
  void reloadData() override;
  void addNewCustomer();
  /// A job of the customer whose row is selected; nothing when none is.
  void addNewJob();
  /// Kept: also in a linked document, unlike the services' list.
  void deleteRow() override;
  /// A duplicate customer's name is refused; a job's name is compared with the customers' too.
  void setValue(const CellValue& value, const QString& column, int row) override;
  [[nodiscard]] bool validateMenuItem(ListCommand item) const override;

  /// Whether a name may be stored; says why not and opens the editor again.
  [[nodiscard]] bool mayLeaveCustomer(const QString& name);
  /// The row's job; none for a customer's row.
  [[nodiscard]] Job* jobForRow(int row) const;
  /// The row's customer; none for a job's row.
  [[nodiscard]] Customer* customerForRow(int row) const;

 protected:
  void setAllShown(bool shown) override;

 private:
  [[nodiscard]] std::vector<Customer*> listedCustomers() const;
  [[nodiscard]] std::optional<bool> isInUse(const QString& predicateText, const QString& name);
  void deleteCustomer(Customer& customer);
  void deleteJob(Job& job);
  void storeName(CustomerListRow row, const QString& name, int index);

  RowTable<CustomerListRow> rows_;
  bool refusing_ = false;
};

}  // namespace pendra
