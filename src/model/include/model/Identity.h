#pragma once

#include "store/ManagedObject.h"

namespace pendra {

class DocumentSettings;

/// In whose name, and for which company, a document's time is sent.
class Identity final : public ManagedObject {
 public:
  static const EntityDescriptor& descriptor();
  [[nodiscard]] const EntityDescriptor& entity() const override { return descriptor(); }

  /// Path of the company file; "" when standalone. None passes every company check, "" does not.
  [[nodiscard]] const std::optional<QString>& companyFileName() const { return companyFileName_.get(); }
  void setCompanyFileName(std::optional<QString> name);
  /// "Me" stands for the user when no employee was chosen.
  [[nodiscard]] const std::optional<QString>& employeeName() const { return employeeName_.get(); }
  void setEmployeeName(std::optional<QString> name);

 private:
  Slot<QString> companyFileName_;
  Slot<QString> employeeName_;
  ToMany<DocumentSettings> documents_;
};

}  // namespace pendra
