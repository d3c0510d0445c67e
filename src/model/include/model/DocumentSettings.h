#pragma once

#include "store/ManagedObject.h"

namespace pendra {

class Activity;
class Customer;
class Identity;
class Service;

/// A document's settings (entity "Document"). Where there are several, the first one counts.
class DocumentSettings final : public ManagedObject {
 public:
  static const EntityDescriptor& descriptor();
  [[nodiscard]] const EntityDescriptor& entity() const override { return descriptor(); }

  [[nodiscard]] Identity* identity() const;
  void setIdentity(Identity* identity);
  /// Whether the user keeps the lists by hand, without Vantor.
  [[nodiscard]] std::optional<bool> standalone() const { return standalone_.get(); }
  void setStandalone(std::optional<bool> standalone) { assign(standalone_, standalone); }

  /// Whether a timer that is started stops the others. The preference of who has the document open; stands in
  /// no file.
  [[nodiscard]] bool startsOneAtATime() const { return startsOneAtATime_; }
  void setStartsOneAtATime(bool oneAtATime) { startsOneAtATime_ = oneAtATime; }

  /// When the program last said, while time ran, that it was alive.
  [[nodiscard]] std::optional<Instant> aliveAt() const { return aliveAt_.get(); }
  void setAliveAt(std::optional<Instant> instant) { assign(aliveAt_, instant); }

  /// Nothing else fills these three sets: the lists are fetched from the context.
  [[nodiscard]] Objects<Customer> customers() const { return customers_.get(); }
  [[nodiscard]] Objects<Service> services() const { return services_.get(); }
  [[nodiscard]] Objects<Activity> activities() const { return activities_.get(); }

 private:
  ToOne<Identity> identity_;
  Slot<bool> standalone_;
  Slot<Instant> aliveAt_;
  bool startsOneAtATime_ = false;
  ToMany<Customer> customers_;
  ToMany<Service> services_;
  ToMany<Activity> activities_;
};

}  // namespace pendra
