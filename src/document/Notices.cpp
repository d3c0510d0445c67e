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

void Notices::press(const QString& key, std::size_t action) {
  const auto pressed =
      std::find_if(standing_.begin(), standing_.end(), [&](const Notice& one) { return one.key == key; });
  if (pressed == standing_.end() || action >= pressed->actions.size()) return;
  const NoticeAction chosen = pressed->actions[action];  // the notice may go with what it does
  const QString subject = pressed->key;
  if (!chosen.isDone) withdraw(subject);
  if (chosen.run) chosen.run();
  if (chosen.isDone && chosen.isDone()) withdraw(subject);
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
