#include "platform/NotificationCenter.h"

namespace pendra {

NotificationCenter::Subscription NotificationCenter::observe(const QString& name, Handler handler) {
  auto listener = std::make_shared<Listener>(Listener{name, std::move(handler)});
  listeners_.push_back(listener);
  return listener;
}

void NotificationCenter::post(const QString& name, const UserInfo& info) {
  std::erase_if(listeners_, [](const auto& listener) { return listener.expired(); });
  for (const auto& weak : std::vector(listeners_)) {
    if (const auto listener = weak.lock(); listener && listener->name == name) listener->handler(info);
  }
}

}  // namespace pendra
