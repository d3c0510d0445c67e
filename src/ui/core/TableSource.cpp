#include "ui_core/TableSource.h"

namespace pendra {

TableSource::~TableSource() = default;

}  // namespace pendra
