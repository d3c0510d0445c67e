#pragma once

#include <functional>
#include <memory>
#include <vector>

namespace pendra {

/// Keeps an observation alive; it ends with its subscription. May outlive what is observed.
class Subscription {
 public:
  Subscription() = default;

 private:
  template <class... News>
  friend class Observers;
  explicit Subscription(std::shared_ptr<void> observer) : observer_(std::move(observer)) {}
  std::shared_ptr<void> observer_;
};

/// Those who are told of one kind of news, in the order in which they came.
template <class... News>
class Observers {
 public:
  using Told = std::function<void(News...)>;

  [[nodiscard]] Subscription add(Told told) {
    auto observer = std::make_shared<Told>(std::move(told));
    observers_.push_back(observer);
    return Subscription(std::move(observer));
  }
  void tell(News... news) {
    std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
    // A copy: whoever is told may begin or end an observation.
    for (const auto& weak : std::vector(observers_)) {
      if (const auto observer = weak.lock()) (*observer)(news...);
    }
  }

 private:
  std::vector<std::weak_ptr<Told>> observers_;
};

}  // namespace pendra
