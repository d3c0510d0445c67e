#include "document/Notices.h"

#include <algorithm>

namespace pendra {

void Notices::post(Notice notice) {
  const Notifier::Change change(changes_);
  std::erase_if(standing_, [&](const Notice& one) { return one.key == notice.key; });
  standing_.push_back(std::move(notice));
}

void Notices::withdraw(const QString& key) {
  withdrawWhere([&](const Notice& one) { return one.key == key; });
}

void Notices::withdrawOfDocument() {
  withdrawWhere([](const Notice& one) { return one.ofDocument; });
}

void Notices::withdrawWhere(const std::function<bool(const Notice&)>& goes) {
  if (std::none_of(standing_.begin(), standing_.end(), goes)) return;
  const Notifier::Change change(changes_);
  std::erase_if(standing_, goes);
}

}  // namespace pendra
