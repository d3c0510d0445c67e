#include "store/TextIndex.h"

#include "InOrder.h"

namespace pendra {

void TextIndex::add(const QString& text, ManagedObject& object) { insertInOrder(sharers_[text], object); }

void TextIndex::remove(const QString& text, const ManagedObject& object) {
  const auto found = sharers_.find(text);
  if (found == sharers_.end()) return;
  eraseInOrder(*found, object);
  if (found->isEmpty()) sharers_.erase(found);
}

std::span<ManagedObject* const> TextIndex::find(const QString& text) const {
  const auto found = sharers_.constFind(text);
  if (found == sharers_.constEnd()) return {};
  return {found->constData(), static_cast<std::size_t>(found->size())};
}

}  // namespace pendra
