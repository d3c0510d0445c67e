#pragma once
// The whole document is in memory, and the context owns it: every object of it, what has changed since
// the last save, and the file to which a save writes exactly that.

#include <memory>
#include <optional>
#include <vector>

#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/Result.h"
#include "store/ManagedObject.h"
#include "store/Predicate.h"
#include "store/TextIndex.h"

namespace pendra {

class PersistentStore;

/// The objects of one document. One thread only.
class ObjectContext {
 public:
  /// An empty context without a file. The clock and the calendar must outlive it.
  ObjectContext(const ObjectModel& model, const Clock& clock, const Calendar& calendar);
  ~ObjectContext();
  ObjectContext(const ObjectContext&) = delete;
  ObjectContext& operator=(const ObjectContext&) = delete;

  [[nodiscard]] const Clock& clock() const { return clock_; }
  [[nodiscard]] const Calendar& calendar() const { return calendar_; }

  /// Opens the file at `path` and reads it; a missing or empty file becomes a new document at once.
  /// On failure the context stays without a file, and every save of it fails.
  Result<void> open(const QString& path);
  /// Lets go of the file, so that it can be opened again; every later save fails.
  void close();
  [[nodiscard]] bool hasStore() const { return store_ != nullptr; }
  [[nodiscard]] bool hasChanges() const { return !changed_.empty() || !deleted_.empty(); }
  /// Another number after every change of any object; what was derived from the objects holds while it stays.
  [[nodiscard]] quint64 changeCount() const { return changeCount_; }
  /// Writes what changed in one transaction; durable when it returns. A file that has vanished from its
  /// path is made anew with everything. On failure the file holds its old state, and what changed stays
  /// remembered for the next save. Without changes only the file's time is set.
  Result<void> save();

  /// A new object; `awakeFromInsert` has run.
  template <class T>
  T& insert() {
    return static_cast<T&>(insertObject(T::descriptor(), false));
  }
  /// A new object that no save writes.
  template <class T>
  T& insertTemporary() {
    return static_cast<T&>(insertObject(T::descriptor(), true));
  }
  /// Deletes by the model's delete rules. Deleting twice is deleting once. The object itself stays
  /// readable, out of every relationship, until the next save.
  void deleteObject(ManagedObject& object);

  /// Makes room for so many objects of a class in all, which voids the views of them. Only a hint: fewer or
  /// more may come.
  template <class T>
  void expect(std::size_t count) {
    makeRoom(T::descriptor(), count);
  }

  /// All objects of a class in the order of insertion. The view is void once an object of the class
  /// comes or goes; `fetch` copies.
  template <class T>
  [[nodiscard]] Objects<T> all() const {
    return Objects<T>(objectsOf(T::descriptor()));
  }
  template <class T>
  [[nodiscard]] std::vector<T*> fetch() const {
    return all<T>().copy();
  }
  /// The objects for which `condition` holds, in the order of insertion.
  template <class T, class Condition>
  [[nodiscard]] std::vector<T*> fetch(const Condition& condition) const {
    std::vector<T*> found;
    for (T* object : all<T>()) {
      if (condition(*object)) found.push_back(object);
    }
    return found;
  }
  /// "key == text", answered from the index of an indexed property, in the order of insertion.
  template <class T>
  [[nodiscard]] Objects<T> matching(const char* key, const QString& text) const {
    return Objects<T>(lookUp(T::descriptor(), key, text));
  }

 private:
  friend class ManagedObject;
  friend class RelationshipKeeper;
  friend class PersistentStore;

  struct Table {
    const EntityDescriptor* entity = nullptr;
    std::vector<std::unique_ptr<ManagedObject>> owned;  // ascending by id
    std::vector<ManagedObject*> objects;                // the same, for views
    qint64 lastID = 0;
    std::vector<std::pair<const PropertyDescriptor*, TextIndex>> indexes;  // one for each indexed property
  };
  struct DeletedRow {
    const EntityDescriptor* entity;
    qint64 id;
  };

  void makeTables();
  void makeRoom(const EntityDescriptor& entity, std::size_t count);
  ManagedObject& insertObject(const EntityDescriptor& entity, bool temporary);
  ManagedObject& adopt(std::unique_ptr<ManagedObject> object, qint64 id);
  /// Ties a link that was read to its target; a target that is not there leaves none.
  void linkRead(ManagedObject& owner, const PropertyDescriptor& property, qint64 target);
  void remove(ManagedObject& object);
  void forgetChanges();

  void noteChange(ManagedObject& object);
  void textChanged(ManagedObject& object, const PropertyDescriptor& property,
                   const std::optional<QString>& from, const std::optional<QString>& to);

  Table& table(const EntityDescriptor& entity);
  [[nodiscard]] const Table& table(const EntityDescriptor& entity) const;
  [[nodiscard]] std::span<ManagedObject* const> objectsOf(const EntityDescriptor& entity) const;
  [[nodiscard]] std::span<ManagedObject* const> lookUp(const EntityDescriptor& entity, const char* key,
                                                       const QString& text) const;
  [[nodiscard]] ManagedObject* objectWithID(const EntityDescriptor& entity, qint64 id) const;

  const ObjectModel& model_;
  const Clock& clock_;
  const Calendar& calendar_;
  std::vector<Table> tables_;
  quint64 changeCount_ = 0;
  std::vector<ManagedObject*> changed_;
  std::vector<DeletedRow> deleted_;
  std::vector<std::unique_ptr<ManagedObject>> graveyard_;  // deleted since the last save
  std::unique_ptr<PersistentStore> store_;
};

}  // namespace pendra
