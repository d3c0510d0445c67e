#pragma once
// A document and a copy of it from another day hold the same things under the same identifiers. An identifier
// can still stand for another thing in each: the last one that was given is given again after its object was
// deleted and the document opened anew.

#include <functional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "store/ManagedObject.h"

namespace pendra {

class ObjectContext;

/// What a document keeps when it takes over another state.
struct TransferRules {
  /// What stays exactly as it is; whatever it refers to stays with it, and may change.
  std::function<bool(const ManagedObject& mine)> stays;
  /// Whether two objects of one identifier are one thing. `isKept`: mine stays in any case.
  std::function<bool(const ManagedObject& mine, const ManagedObject& theirs, bool isKept)> isSame;
  /// What an object that both have keeps of its own.
  std::function<bool(const PropertyDescriptor&)> isOwn;
};

/// Gives a document the state of another one: what only that one has comes, under its identifier where that
/// is free; what only this one has goes. A part of an edit.
class StateTransfer {
 public:
  StateTransfer(ObjectContext& to, const ObjectContext& from, TransferRules rules)
      : to_(to), from_(from), rules_(std::move(rules)) {}
  void run();

  /// Whether two documents hold the same objects with the same values; properties for which `isIgnored` holds
  /// do not count.
  [[nodiscard]] static bool isSameState(const ObjectContext& one, const ObjectContext& other,
                                        const std::function<bool(const PropertyDescriptor&)>& isIgnored);

 private:
  struct Pair {
    ManagedObject* mine;
    const ManagedObject* theirs;
    bool isNew;
    bool idIsFree;
  };
  void keepWhatStays();
  void keep(ManagedObject& mine);
  void pairUp(const ManagedObject& theirs);
  void bringMissing();
  void takeValues(const Pair& pair);
  void removeOthers();

  ObjectContext& to_;
  const ObjectContext& from_;
  TransferRules rules_;
  std::unordered_set<const ManagedObject*> kept_;
  std::vector<Pair> pairs_;
  std::unordered_map<const ManagedObject*, ManagedObject*> mineOf_;
};

}  // namespace pendra
