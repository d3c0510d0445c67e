#pragma once

#include "store/ManagedObject.h"

namespace pendra {

class Activity;
class DocumentSettings;

/// A service item: what kind of work it is, and with it what it costs.
class Service final : public ManagedObject {
 public:
  static const EntityDescriptor& descriptor();
  [[nodiscard]] const EntityDescriptor& entity() const override { return descriptor(); }

  [[nodiscard]] const std::optional<QString>& name() const { return name_.get(); }
  void setName(std::optional<QString> name);
  /// Vantor's identifier of the item; "0" for one that exists only here.
  [[nodiscard]] const std::optional<QString>& vtObjectID() const { return vtObjectID_.get(); }
  void setVtObjectID(std::optional<QString> id);
  /// Whether the item is offered in the pick lists; false until the user chooses to.
  [[nodiscard]] std::optional<bool> shown() const { return shown_.get(); }
  void setShown(std::optional<bool> shown) { assign(shown_, shown); }
  /// The activities that name this item.
  [[nodiscard]] Objects<Activity> activities() const { return activities_.get(); }

 private:
  Slot<QString> name_;
  Slot<QString> vtObjectID_;
  Slot<bool> shown_{false};
  ToMany<Activity> activities_;
  ToOne<DocumentSettings> document_;
};

}  // namespace pendra
