#include "model/Customer.h"

#include "model/Activity.h"
#include "model/CorvelDoc.h"
#include "model/Job.h"

namespace pendra {

const EntityDescriptor& Customer::descriptor() {
  using namespace describe;
  static constexpr PropertyDescriptor kProperties[] = {
      indexedText<&Customer::name_>("name"),
      indexedText<&Customer::vtObjectID_>("vtObjectID"),
      boolean<&Customer::shown_>("shown"),
      number<&Customer::index_>("index"),
      toMany<&Customer::jobs_, Job>("jobs", "customer", DeleteRule::Cascade),
      toMany<&Customer::activities_, Activity>("activities", "customer"),
      toOne<&Customer::document_, CorvelDoc>("document", "customers"),
  };
  static constexpr EntityDescriptor kDescriptor{"Customer", kProperties, &make<Customer>};
  return kDescriptor;
}

CorvelDoc* Customer::document() const { return document_.get(); }
void Customer::setDocument(CorvelDoc* document) { relate(document_, document); }

int Customer::compare(const Customer& other) const {
  const auto view = [](const std::optional<QString>& name) {
    return name ? QStringView(*name) : QStringView();
  };
  return view(name_).compare(view(other.name_));
}

}  // namespace pendra
