#pragma once

#include "model/ListRecord.h"

namespace pendra {

class Activity;
class DocumentSettings;

/// A service item: what kind of work it is, and with it what it costs. Not offered until the user chooses to.
class Service final : public ListRecord {
 public:
  Service() { shown_.set(false); }
  static const EntityDescriptor& descriptor();
  [[nodiscard]] const EntityDescriptor& entity() const override { return descriptor(); }

  /// The activities that name this item.
  [[nodiscard]] Objects<Activity> activities() const { return activities_.get(); }

 private:
  ToMany<Activity> activities_;
  ToOne<DocumentSettings> document_;
};

}  // namespace pendra
