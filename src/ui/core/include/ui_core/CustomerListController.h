#pragma once
// A row shows a customer or a job, for good: a job row whose job has gone is still no customer's row, and
// nothing that is done to it reaches anybody.

#include "model/Customer.h"
#include "model/Job.h"
#include "ui_core/ListController.h"

namespace pendra {

/// A row of the customer list.
struct CustomerListRow {
  bool isJob = false;
  Ref<Customer> customer;  ///< none for a job's row
  Ref<Job> job;            ///< none for a customer's row
};

/// The customers with their jobs as one flat list.
class CustomerListController : public ListOf<CustomerListRow> {
 public:
  /// By name; of several customers of one name only the first is listed. A search finds customers by their
  /// own name and by their jobs', and lists a found customer with all its jobs.
  CustomerListController(Session& session, ListView& view);

  void addNewCustomer();
  /// A job of the customer whose row is selected; nothing when none is.
  void addNewJob();
  /// Kept: promised to those who keep the lists: also in a linked document, unlike the services' list.
  void deleteRow() override;
  [[nodiscard]] bool canAddJob() const override { return standalone() && customerForRow(selection().row()); }

  /// Whether a name may be stored; says why not and opens the editor again.
  [[nodiscard]] bool mayLeaveCustomer(const QString& name);
  /// The row's job; none for a customer's row.
  [[nodiscard]] Job* jobForRow(int row) const;
  /// The row's customer; none for a job's row.
  [[nodiscard]] Customer* customerForRow(int row) const;

 protected:
  [[nodiscard]] std::vector<CustomerListRow> listedRows() const override;
  void documentEdited(const ChangeSet& changes) override;
  /// A duplicate customer's name is refused; a job's name is compared with the customers' too.
  [[nodiscard]] bool takeName(int row, const QString& name) override;
  [[nodiscard]] QString nameInRow(int row) const override;
  void markShown(int row, bool shown) override;

 private:
  [[nodiscard]] std::vector<Customer*> listedCustomers() const;
  [[nodiscard]] std::optional<bool> isInUse(const QString& predicateText, const QString& name);
  void deleteCustomer(Customer& customer);
  void deleteJob(Job& job);

  bool refusing_ = false;
};

}  // namespace pendra
