#include "platform/Notifier.h"

namespace pendra {

Notifier::Subscription Notifier::observe(std::function<void()> didChange, std::function<void()> willChange) {
  auto observer = std::make_shared<Observer>(Observer{std::move(willChange), std::move(didChange)});
  observers_.push_back(observer);
  return Subscription(std::move(observer));
}

void Notifier::announce(std::function<void()> Observer::*moment) {
  std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
  // A copy: whoever is told may begin or end an observation.
  for (const auto& weak : std::vector(observers_)) {
    if (const auto observer = weak.lock(); observer && (*observer).*moment) ((*observer).*moment)();
  }
}

}  // namespace pendra
