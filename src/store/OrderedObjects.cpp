#include "store/OrderedObjects.h"

#include "store/ManagedObject.h"

namespace pendra {

namespace {

bool standsBefore(const ManagedObject* object, qint64 id) { return object->objectID() < id; }

bool comesFirst(const ManagedObject* a, const ManagedObject* b) { return a->objectID() < b->objectID(); }

}  // namespace

std::span<ManagedObject* const> OrderedObjects::view() const {
  if (pending_) settle();
  return {objects_.data(), static_cast<std::size_t>(objects_.size())};
}

void OrderedObjects::add(ManagedObject& object) {
  // The newest object is the usual one, and goes to the end.
  if (objects_.isEmpty() || comesFirst(objects_.back(), &object)) {
    objects_.push_back(&object);
  } else {
    pending(false).objects.push_back(&object);
  }
}

bool OrderedObjects::remove(ManagedObject& object) {
  if (!pending_ && !objects_.isEmpty() && objects_.back() == &object) {
    objects_.pop_back();
    return false;
  }
  auto& leaving = pending(true).objects;
  leaving.push_back(&object);
  return leaving.size() == 1;
}

std::vector<ManagedObject*> OrderedObjects::takeAll() {
  const auto all = view();
  std::vector<ManagedObject*> taken(all.begin(), all.end());
  objects_.clear();
  return taken;
}

OrderedObjects::Pending& OrderedObjects::pending(bool leaving) {
  if (pending_ && pending_->leaving != leaving) settle();
  if (!pending_) pending_ = std::make_unique<Pending>(Pending{{}, leaving});
  return *pending_;
}

void OrderedObjects::settle() const {
  const auto noted = std::exchange(pending_, nullptr);
  if (!noted) return;
  std::sort(noted->objects.begin(), noted->objects.end(), comesFirst);
  noted->leaving ? removePending(noted->objects) : addPending(noted->objects);
}

/// Moves the runs between those that leave together, from the front.
void OrderedObjects::removePending(const std::vector<ManagedObject*>& sorted) const {
  auto from = objects_.begin();
  auto to = from;
  for (ManagedObject* object : sorted) {
    const auto place = std::lower_bound(from, objects_.end(), object->objectID(), standsBefore);
    to = std::move(from, place, to);
    from = place;
    if (from != objects_.end() && *from == object) ++from;
  }
  objects_.erase(std::move(from, objects_.end(), to), objects_.end());
}

/// Moves the runs between those that come apart, from the back.
void OrderedObjects::addPending(const std::vector<ManagedObject*>& sorted) const {
  auto size = objects_.size();
  objects_.resize(size + std::ssize(sorted));
  auto to = objects_.end();
  for (auto object = sorted.rbegin(); object != sorted.rend(); ++object) {
    const auto end = objects_.begin() + size;
    const auto place = std::lower_bound(objects_.begin(), end, (*object)->objectID(), standsBefore);
    to = std::move_backward(place, end, to);
    *--to = *object;
    size = place - objects_.begin();
  }
}

ManagedObject* withID(std::span<ManagedObject* const> objects, qint64 id) {
  if (id <= 0) return nullptr;
  // Identifiers ascend from 1, so an object stands at most as far on as its own says, and just there as
  // long as nothing before it was deleted.
  const auto reach = objects.begin() + std::min<qint64>(id, std::ssize(objects));
  if (reach != objects.begin() && (*std::prev(reach))->objectID() == id) return *std::prev(reach);
  const auto found = std::lower_bound(objects.begin(), reach, id, standsBefore);
  return found != reach && (*found)->objectID() == id ? *found : nullptr;
}

}  // namespace pendra
