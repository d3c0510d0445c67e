#pragma once
// Objects of one class stand in the order of their insertion, which is that of their identifiers.

#include <algorithm>

#include "store/ManagedObject.h"

namespace pendra {

inline bool standsBefore(const ManagedObject* object, qint64 id) { return object->objectID() < id; }

/// The place of the object of that identifier, or the place where it would stand.
template <class Pointers>
auto placeInOrder(Pointers& objects, qint64 id) {
  return std::lower_bound(objects.begin(), objects.end(), id, standsBefore);
}

/// The newest object is the usual one, and goes to the end.
template <class Pointers>
void insertInOrder(Pointers& objects, ManagedObject& object) {
  if (objects.empty() || standsBefore(objects.back(), object.objectID())) {
    objects.push_back(&object);
  } else {
    objects.insert(placeInOrder(objects, object.objectID()), &object);
  }
}

/// Nothing happens when the object is not among them.
template <class Pointers>
void eraseInOrder(Pointers& objects, const ManagedObject& object) {
  const auto place = placeInOrder(objects, object.objectID());
  if (place != objects.end() && *place == &object) objects.erase(place);
}

}  // namespace pendra
