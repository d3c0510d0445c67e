#pragma once

#include <QSet>

#include "store/ChangeSet.h"

namespace pendra {

/// The objects of these classes that the edit changed, for rows that ask whether theirs is among them.
template <class... Classes>
QSet<const ManagedObject*> changedObjects(const ChangeSet& changes) {
  QSet<const ManagedObject*> changed;
  const auto add = [&changed](const auto& objects) {
    for (const ManagedObject* one : objects) changed << one;
  };
  (add(changes.changed<Classes>()), ...);
  return changed;
}

}  // namespace pendra
