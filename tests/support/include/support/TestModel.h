#pragma once

#include "model/Model.h"
#include "support/TestPlaces.h"

namespace pendra {

/// The model of documents over the tables that the program finds among its resources.
inline const ObjectModel& testModel() {
  static const ObjectModel model = objectModel(contentsOf(QStringLiteral(PENDRA_RESOURCES "/Corvel.momd")));
  return model;
}

}  // namespace pendra
