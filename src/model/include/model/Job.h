#pragma once

#include "model/ListRecord.h"

namespace pendra {

class Activity;
class Customer;

/// A job of one customer; its name need only be unique within that customer. Offered unless the user hides
/// it.
class Job final : public ListRecord {
 public:
  Job() { shown_.set(true); }
  static const EntityDescriptor& descriptor();
  [[nodiscard]] const EntityDescriptor& entity() const override { return descriptor(); }

  [[nodiscard]] Customer* customer() const;
  void setCustomer(Customer* customer);
  [[nodiscard]] Objects<Activity> activities() const { return activities_.get(); }

 private:
  ToOne<Customer> customer_;
  ToMany<Activity> activities_;
};

}  // namespace pendra
