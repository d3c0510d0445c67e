#include "document/Notices.h"

#include <algorithm>

namespace pendra {

void Notices::post(Notice notice) {
  const Notifier::Change change(changes_);
  std::erase_if(standing_, [&](const Notice& one) { return one.key == notice.key; });
  standing_.push_back(std::move(notice));
}

void Notices::withdraw(const QString& key) {
  const auto same = [&](const Notice& one) { return one.key == key; };
  if (std::none_of(standing_.begin(), standing_.end(), same)) return;
  const Notifier::Change change(changes_);
  std::erase_if(standing_, same);
}

}  // namespace pendra
