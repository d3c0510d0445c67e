#pragma once

#include "store/ManagedObject.h"

namespace pendra {

class Activity;
class CorvelDoc;

/// A service item: what kind of work it is, and with it what it costs.
class Service final : public ManagedObject {
 public:
  static const EntityDescriptor& descriptor();
  [[nodiscard]] const EntityDescriptor& entity() const override { return descriptor(); }

  [[nodiscard]] const std::optional<QString>& name() const { return name_; }
  void setName(std::optional<QString> name) { assign(name_, std::move(name)); }
  /// Vantor's identifier of the item; "0" for one that exists only here.
  [[nodiscard]] const std::optional<QString>& vtObjectID() const { return vtObjectID_; }
  void setVtObjectID(std::optional<QString> id) { assign(vtObjectID_, std::move(id)); }
  /// Whether the item is offered in the pick lists; false until the user chooses to.
  [[nodiscard]] std::optional<bool> shown() const { return shown_; }
  void setShown(std::optional<bool> shown) { assign(shown_, shown); }
  /// The activities that name this item.
  [[nodiscard]] Objects<Activity> activity() const { return activity_.get(); }
  [[nodiscard]] CorvelDoc* document() const;
  void setDocument(CorvelDoc* document);

  [[nodiscard]] QString description() const { return name_.value_or(QString()); }
  /// As Customer::compare.
  [[nodiscard]] int compare(const Service& other) const;
  /// A free-standing service with this one's name and identifier and nothing else.
  [[nodiscard]] std::unique_ptr<Service> copyWithZone() const;

 private:
  std::optional<QString> name_;
  std::optional<QString> vtObjectID_;
  std::optional<bool> shown_ = false;
  ToMany<Activity> activity_;
  ToOne<CorvelDoc> document_;
};

}  // namespace pendra
