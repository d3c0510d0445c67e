#pragma once
// An object lives in a context or in none; what outlives one action never holds a bare pointer to it but
// a Ref, which reads as none from the moment the object is deleted or its document closes.

#include <QtGlobal>
#include <memory>
#include <optional>

#include "store/Descriptors.h"

namespace pendra {

class ObjectContext;

/// Base of the entities. Made and owned by its context; a free-standing object belongs to whoever made it.
class ManagedObject {
 public:
  ManagedObject() = default;
  virtual ~ManagedObject();
  ManagedObject(const ManagedObject&) = delete;
  ManagedObject& operator=(const ManagedObject&) = delete;

  [[nodiscard]] virtual const EntityDescriptor& entity() const = 0;
  /// Its row in the file; ascending in the order of insertion. 0 outside any context.
  [[nodiscard]] qint64 objectID() const { return id_; }
  /// The context it lives in; none for a free-standing or deleted object.
  [[nodiscard]] ObjectContext* context() const { return context_; }
  [[nodiscard]] bool isDeleted() const { return deleted_; }
  /// A temporary object is never written to the file.
  [[nodiscard]] bool isTemporary() const { return temporary_; }

 protected:
  /// Runs once, when the object is inserted as new, not when it is read.
  virtual void awakeFromInsert() {}

  /// Writes an attribute and notes the change; an equal value changes nothing.
  template <class Held>
  void assign(std::optional<Held>& member, std::optional<Held> value) {
    if (member == value) return;
    if (context_) willChange(&member);
    if constexpr (std::is_same_v<Held, QString>) {
      assignText(member, std::move(value));
    } else {
      member = value;
    }
    noteChange();
  }
  /// Writes a to-one relationship and keeps the other end in step. Only objects of one context are tied:
  /// a deleted or free-standing target counts as none, and a deleted owner gets none.
  void relate(ToOneBase& member, ManagedObject* target);

 private:
  friend class Editing;
  friend class ObjectContext;
  friend class PersistentStore;
  friend class RelationshipKeeper;
  template <class T>
  friend class Ref;

  void assignText(std::optional<QString>& member, std::optional<QString> value);
  void willChange(const void* member);
  void noteChange();
  const std::shared_ptr<ManagedObject*>& cell();

  qint64 id_ = 0;
  ObjectContext* context_ = nullptr;
  std::shared_ptr<ManagedObject*> cell_;  // made for the first Ref; holds none once deleted
  bool dirty_ = false;
  bool deleted_ = false;
  bool temporary_ = false;
  bool cameInEdit_ = false;  // the three serve the edit that is running
  bool wentInEdit_ = false;
  quint32 changedInEdit_ = 0;  // one bit for each property, by its place in the entity
};

/// A reference that outlives the action: none once the object is deleted or its context is gone.
template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(T* object) : cell_(object && !object->isDeleted() ? object->cell() : nullptr) {}

  [[nodiscard]] T* get() const { return cell_ ? static_cast<T*>(*cell_) : nullptr; }
  T* operator->() const { return get(); }
  T& operator*() const { return *get(); }
  explicit operator bool() const { return get() != nullptr; }
  friend bool operator==(const Ref& a, const Ref& b) { return a.get() == b.get(); }
  friend bool operator==(const Ref& a, const T* b) { return a.get() == b; }

 private:
  std::shared_ptr<ManagedObject*> cell_;
};

}  // namespace pendra
