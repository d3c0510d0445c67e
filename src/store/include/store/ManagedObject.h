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
  virtual ~ManagedObject() = default;
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
  virtual void onInsert() {}

  /// Writes an attribute and notes the change; an equal value changes nothing.
  template <class Held>
  void assign(Slot<Held>& slot, std::optional<Held> value) {
    if (slot.get() == value) return;
    const PropertyDescriptor* changing = context_ ? &willChange(&slot) : nullptr;
    slot.set(std::move(value));
    if (changing) hasChanged(*changing);
  }
  /// Writes a to-one relationship and keeps the other end in step. Only objects of one context are tied:
  /// a deleted or free-standing target counts as none, and a deleted owner gets none.
  void relate(ToOneBase& member, ManagedObject* target);

 private:
  friend class Editing;
  friend class ObjectContext;
  friend class PersistentStore;
  friend class RelationshipKeeper;
  friend struct LetGo;
  template <class T>
  friend class Ref;

  const PropertyDescriptor& willChange(const void* slot);
  void hasChanged(const PropertyDescriptor& property);
  /// Its owner has let go of it: it goes with the last Ref, and is none to all of them.
  void letGo();
  void releaseRef();

  // A document has hundreds of thousands of these: what is added here is paid for by each.
  ObjectContext* context_ = nullptr;
  qint64 id_ = 0;
  quint32 refs_ = 0;
  bool dirty_ : 1 = false;
  bool deleted_ : 1 = false;
  bool temporary_ : 1 = false;
  bool withoutOwner_ : 1 = false;
  bool cameInEdit_ : 1 = false;  // the two serve the edit that is running
  bool wentInEdit_ : 1 = false;
};

/// A reference that outlives the action: none once the object is deleted or its context is gone, and from the
/// start for an object without a context.
template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(T* object) : object_(object && object->context_ ? object : nullptr) { hold(); }
  Ref(const Ref& other) : object_(other.object_) { hold(); }
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Ref() {
    if (object_) object_->releaseRef();
  }

  [[nodiscard]] T* get() const { return object_ && object_->context_ ? static_cast<T*>(object_) : nullptr; }
  T* operator->() const { return get(); }
  T& operator*() const { return *get(); }
  explicit operator bool() const { return get() != nullptr; }
  friend bool operator==(const Ref& a, const Ref& b) { return a.get() == b.get(); }
  friend bool operator==(const Ref& a, const T* b) { return a.get() == b; }
  /// Where the object is, or was before it became none: to be compared, without a look at the object.
  [[nodiscard]] const ManagedObject* address() const { return object_; }

 private:
  void hold() {
    if (object_) ++object_->refs_;
  }
  ManagedObject* object_ = nullptr;
};

}  // namespace pendra
