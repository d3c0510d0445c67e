#pragma once

#include "model/ListRecord.h"

namespace pendra {

class Activity;
class DocumentSettings;
class Job;

/// Whom work is done for. Matched by its exact name, which is neither trimmed nor folded.
class Customer final : public ListRecord {
 public:
  static const EntityDescriptor& descriptor();
  [[nodiscard]] const EntityDescriptor& entity() const override { return descriptor(); }

  /// Consulted when a new customer is numbered. Kept for what reads the documents: nothing writes it.
  [[nodiscard]] std::optional<double> index() const { return index_.get(); }
  [[nodiscard]] Objects<Job> jobs() const { return jobs_.get(); }
  [[nodiscard]] Objects<Activity> activities() const { return activities_.get(); }

 private:
  Slot<double> index_{0};
  ToMany<Job> jobs_;
  ToMany<Activity> activities_;
  ToOne<DocumentSettings> document_;
};

}  // namespace pendra
