#include "model/Service.h"

#include "model/Activity.h"
#include "model/CorvelDoc.h"

namespace pendra {

const EntityDescriptor& Service::descriptor() {
  using namespace describe;
  static constexpr PropertyDescriptor kProperties[] = {
      indexedText<&Service::name_>("name"),
      indexedText<&Service::vtObjectID_>("vtObjectID"),
      boolean<&Service::shown_>("shown"),
      toMany<&Service::activity_, Activity>("activity", "service"),
      toOne<&Service::document_, CorvelDoc>("document", "services"),
  };
  static constexpr EntityDescriptor kDescriptor{"Service", kProperties, &make<Service>};
  return kDescriptor;
}

CorvelDoc* Service::document() const { return document_.get(); }
void Service::setDocument(CorvelDoc* document) { relate(document_, document); }

int Service::compare(const Service& other) const {
  const auto view = [](const std::optional<QString>& name) {
    return name ? QStringView(*name) : QStringView();
  };
  return view(name_).compare(view(other.name_));
}

std::unique_ptr<Service> Service::copyWithZone() const {
  auto copy = std::make_unique<Service>();
  copy->name_ = name_;
  copy->vtObjectID_ = vtObjectID_;
  copy->shown_.reset();
  return copy;
}

}  // namespace pendra
