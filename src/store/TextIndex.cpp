#include "store/TextIndex.h"

namespace pendra {

void TextIndex::add(const QString& text, ManagedObject& object) { sharers_[text].add(object); }

void TextIndex::remove(const QString& text, ManagedObject& object) {
  const auto found = sharers_.find(text);
  if (found == sharers_.end()) return;
  if (found->second.remove(object)) left_.append(text);
  if (found->second.isEmpty()) sharers_.erase(found);
}

std::span<ManagedObject* const> TextIndex::find(const QString& text) const {
  const auto found = sharers_.find(text);
  if (found == sharers_.end()) return {};
  return found->second.view();
}

void TextIndex::settle() {
  for (const QString& text : std::exchange(left_, {})) {
    const auto found = sharers_.find(text);
    if (found != sharers_.end() && found->second.view().empty()) sharers_.erase(found);
  }
}

}  // namespace pendra
