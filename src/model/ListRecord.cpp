#include "model/ListRecord.h"

namespace pendra {

void ListRecord::setName(std::optional<QString> name) { assign(name_, std::move(name)); }

void ListRecord::setVtObjectID(std::optional<QString> id) { assign(vtObjectID_, std::move(id)); }

}  // namespace pendra
