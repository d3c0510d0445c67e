#pragma once

#include <QVarLengthArray>
#include <QtGlobal>
#include <memory>
#include <span>
#include <vector>

namespace pendra {

class ManagedObject;

/// Objects of one class in the order of their insertion, which is that of their identifiers. Those that
/// leave, or come back between others, are noted and worked in together before the next look, so that many
/// cost one pass. Until then whatever left must live. Owns nothing.
class OrderedObjects {
 public:
  /// The objects; void once one comes or goes.
  [[nodiscard]] std::span<ManagedObject* const> view() const;
  /// Whether there is nothing, and nothing is noted.
  [[nodiscard]] bool isEmpty() const { return objects_.isEmpty() && !pending_; }
  void add(ManagedObject& object);
  /// Nothing happens when the object is not among them. Answers true for the first that must live until the
  /// next look.
  bool remove(ManagedObject& object);
  /// Takes all of them out.
  std::vector<ManagedObject*> takeAll();

  /// Works in what is noted.
  void settle() const;
  void reserve(std::size_t count) { objects_.reserve(static_cast<qsizetype>(count)); }
  /// Gives back the room that nothing stands in.
  void squeeze() { objects_.squeeze(); }

 private:
  struct Pending {
    std::vector<ManagedObject*> objects;
    bool leaving;
  };
  Pending& pending(bool leaving);
  void removePending(const std::vector<ManagedObject*>& sorted) const;
  void addPending(const std::vector<ManagedObject*>& sorted) const;

  mutable QVarLengthArray<ManagedObject*, 1> objects_;  // many an end and many a text has one
  mutable std::unique_ptr<Pending> pending_;
};

/// The object of that identifier among objects in order; none when it is not there.
[[nodiscard]] ManagedObject* withID(std::span<ManagedObject* const> objects, qint64 id);

}  // namespace pendra
