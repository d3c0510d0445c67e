#pragma once
// The two ends of a relationship. Neither owns its targets: the context owns every object.

#include <cstddef>
#include <iterator>
#include <span>
#include <vector>

#include "store/OrderedObjects.h"

namespace pendra {

/// A view of objects of one class, in the order of insertion into the document.
template <class T>
class Objects {
 public:
  class Iterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = T*;
    using difference_type = std::ptrdiff_t;
    using pointer = T* const*;
    using reference = T*;

    Iterator() = default;
    explicit Iterator(ManagedObject* const* at) : at_(at) {}
    T* operator*() const { return static_cast<T*>(*at_); }
    Iterator& operator++() {
      ++at_;
      return *this;
    }
    Iterator operator++(int) { return Iterator(at_++); }
    friend bool operator==(Iterator, Iterator) = default;

   private:
    ManagedObject* const* at_ = nullptr;
  };

  explicit Objects(std::span<ManagedObject* const> objects) : objects_(objects) {}
  [[nodiscard]] Iterator begin() const { return Iterator(objects_.data()); }
  [[nodiscard]] Iterator end() const { return Iterator(objects_.data() + objects_.size()); }
  [[nodiscard]] std::size_t size() const { return objects_.size(); }
  [[nodiscard]] bool empty() const { return objects_.empty(); }
  [[nodiscard]] T* operator[](std::size_t index) const { return static_cast<T*>(objects_[index]); }
  /// A copy that stays as it is while the objects change.
  [[nodiscard]] std::vector<T*> copy() const { return {begin(), end()}; }

 private:
  std::span<ManagedObject* const> objects_;
};

/// The end that holds one target or none.
class ToOneBase {
 public:
  [[nodiscard]] ManagedObject* target() const { return target_; }

 private:
  friend class RelationshipKeeper;
  ManagedObject* target_ = nullptr;
};

/// The end that holds many targets, in the order of their insertion into the document.
class ToManyBase {
 public:
  [[nodiscard]] std::span<ManagedObject* const> targets() const { return targets_.view(); }

 private:
  friend class RelationshipKeeper;
  OrderedObjects targets_;
};

template <class T>
class ToOne final : public ToOneBase {
 public:
  [[nodiscard]] T* get() const { return static_cast<T*>(target()); }
};

template <class T>
class ToMany final : public ToManyBase {
 public:
  [[nodiscard]] Objects<T> get() const { return Objects<T>(targets()); }
};

}  // namespace pendra
