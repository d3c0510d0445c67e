#pragma once

#include "store/ManagedObject.h"

namespace pendra {

class Activity;
class DocumentSettings;
class Job;

/// Whom work is done for. Matched by its exact name, which is neither trimmed nor folded.
class Customer final : public ManagedObject {
 public:
  static const EntityDescriptor& descriptor();
  [[nodiscard]] const EntityDescriptor& entity() const override { return descriptor(); }

  [[nodiscard]] const std::optional<QString>& name() const { return name_.get(); }
  void setName(std::optional<QString> name);
  /// Vantor's identifier of the customer; "0" for one that exists only here.
  [[nodiscard]] const std::optional<QString>& vtObjectID() const { return vtObjectID_.get(); }
  void setVtObjectID(std::optional<QString> id);
  /// Whether the customer is offered in the pick lists.
  [[nodiscard]] std::optional<bool> shown() const { return shown_.get(); }
  void setShown(std::optional<bool> shown) { assign(shown_, shown); }
  /// Consulted when a new customer is numbered. Kept for what reads the documents: nothing writes it.
  [[nodiscard]] std::optional<double> index() const { return index_.get(); }
  [[nodiscard]] Objects<Job> jobs() const { return jobs_.get(); }
  [[nodiscard]] Objects<Activity> activities() const { return activities_.get(); }

 private:
  Slot<QString> name_;
  Slot<QString> vtObjectID_;
  Slot<bool> shown_;
  Slot<double> index_{0};
  ToMany<Job> jobs_;
  ToMany<Activity> activities_;
  ToOne<DocumentSettings> document_;
};

}  // namespace pendra
