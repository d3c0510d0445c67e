#pragma once

#include "store/ManagedObject.h"

namespace pendra {

class Activity;
class Customer;

/// A job of one customer; its name need only be unique within that customer.
class Job final : public ManagedObject {
 public:
  static const EntityDescriptor& descriptor();
  [[nodiscard]] const EntityDescriptor& entity() const override { return descriptor(); }

  [[nodiscard]] const std::optional<QString>& name() const { return name_.get(); }
  void setName(std::optional<QString> name);
  /// Vantor's identifier of the job; "0" for one that exists only here.
  [[nodiscard]] const std::optional<QString>& vtObjectID() const { return vtObjectID_.get(); }
  void setVtObjectID(std::optional<QString> id);
  /// Whether the job is offered in the pick lists; true unless the user hides it.
  [[nodiscard]] std::optional<bool> shown() const { return shown_.get(); }
  void setShown(std::optional<bool> shown) { assign(shown_, shown); }
  [[nodiscard]] Customer* customer() const;
  void setCustomer(Customer* customer);
  [[nodiscard]] Objects<Activity> activities() const { return activities_.get(); }

 private:
  Slot<QString> name_;
  Slot<QString> vtObjectID_;
  Slot<bool> shown_{true};
  ToOne<Customer> customer_;
  ToMany<Activity> activities_;
};

}  // namespace pendra
