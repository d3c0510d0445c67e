#pragma once

#include "store/ManagedObject.h"

namespace pendra {

/// The identifier of what exists only here, and in no list of Vantor's.
inline const QString kLocalRecord = QStringLiteral("0");

/// What a list of Vantor's holds as well: a customer, a job or a service item. Which of them it is decides
/// whether it is offered from the beginning.
class ListRecord : public ManagedObject {
 public:
  [[nodiscard]] const std::optional<QString>& name() const { return name_.get(); }
  void setName(std::optional<QString> name);
  /// Vantor's identifier of the record, or `kLocalRecord`.
  [[nodiscard]] const std::optional<QString>& vtObjectID() const { return vtObjectID_.get(); }
  void setVtObjectID(std::optional<QString> id);
  /// Whether it is offered in the pick lists.
  [[nodiscard]] std::optional<bool> shown() const { return shown_.get(); }
  void setShown(std::optional<bool> shown) { assign(shown_, shown); }

 protected:
  Slot<QString> name_;
  Slot<QString> vtObjectID_;
  Slot<bool> shown_;
};

}  // namespace pendra
