#pragma once
// The whole document is in memory, and the context owns it: every object of it, what has changed since
// the last save, and the file to which a save writes exactly that. A document is changed by edits, each of
// which is told once, stored at once, and can be taken back.

#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/Result.h"
#include "store/ChangeSet.h"
#include "store/Edit.h"
#include "store/ManagedObject.h"
#include "store/Observers.h"
#include "store/Predicate.h"

namespace pendra {

class Editing;
class ObjectTable;
class PersistentStore;
class UndoStack;
struct FileMark;

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
  /// Reads the document at `path` into the empty context before it is known whether that will be opened:
  /// `open` then reads nothing where it finds that file unchanged, and everything where it does not. For a
  /// thread that alone has the context until this returns, early at `stop`. On failure nothing has been read.
  Result<void> readAhead(const QString& path, const std::stop_token& stop);
  /// Lets go of the file, so that it can be opened again; every later save fails.
  void close();
  /// The document's file, for what becomes of it elsewhere than in `save`; none without a file.
  [[nodiscard]] PersistentStore* store() const { return store_.get(); }
  [[nodiscard]] bool hasChanges() const { return !changed_.empty() || !deleted_.empty(); }
  /// Another number after every change of any object; what was derived from the objects holds while it stays.
  [[nodiscard]] quint64 changeCount() const { return changeCount_; }
  /// The objects of a class that no save has stored as they are, in no order.
  template <class T>
  [[nodiscard]] std::vector<T*> unsaved() const {
    std::vector<T*> objects;
    for (ManagedObject* object : changed_) {
      if (object->dirty_ && &object->entity() == &T::descriptor()) objects.push_back(static_cast<T*>(object));
    }
    return objects;
  }
  /// How many objects of any class a save would write or erase.
  [[nodiscard]] std::size_t numberOfUnsaved() const;
  /// Writes what no edit has stored yet in one transaction; durable when it returns. A file that was deleted
  /// is made anew with everything. On failure the file holds its old state, and what changed
  /// stays remembered for the next save. Without changes only the file's time is set. Waits up to two seconds
  /// for another program that reads the file.
  Result<void> save();
  /// Tries to write what is outstanding without making anybody wait: as an edit does.
  Result<void> trySave();

  /// Changes the document: runs `work`, which returns nothing or a Result<void>, and when it has ended well
  /// announces what it did, stores it, and keeps the step that takes it back under `name`, in this order. The
  /// change is on the disk when this returns; where that fails, change and step stand, and `commitState` says
  /// why. When `work` fails or throws, nothing has happened, and its failure is handed on. An edit within an
  /// edit is a part of it that can fail alone. An edit that left everything as it was is none: it is not
  /// announced, stored or kept. No event loop may run in it.
  template <class Work>
  Result<void> edit(const QString& name, Work&& work) {
    return edit(name, EditOptions{}, std::forward<Work>(work));
  }
  template <class Work>
  Result<void> edit(const QString& name, EditOptions options, Work&& work) {
    return runEdit(name, options, [&]() -> Result<void> {
      if constexpr (std::is_void_v<std::invoke_result_t<Work&>>) {
        work();
        return {};
      } else {
        return work();
      }
    });
  }
  /// Changes the document without news and without a step, for what makes a document: readers, samples,
  /// tests. The next save stores it. Never inside an edit.
  template <class Work>
  void fill(Work&& work) {
    const Filling filling(*this);
    work();
  }
  /// Whether every change must stand in an edit or in `fill`; one that does not ends the program then. Off,
  /// such changes are allowed, not announced, and stored by the next save.
  void requireEdits(bool required) { editsRequired_ = required; }

  /// Tells what every edit did, once, when its outermost one has ended and before it is stored. Whoever is
  /// told must not edit.
  [[nodiscard]] Subscription observe(std::function<void(const ChangeSet&)> told);
  /// Whether the file holds what the document holds.
  [[nodiscard]] const CommitState& commitState() const { return commitState_; }
  /// Tells of every attempt to store, the failed ones too.
  [[nodiscard]] Subscription observeCommits(std::function<void(const CommitState&)> told) {
    return commitObservers_.add(std::move(told));
  }
  [[nodiscard]] UndoStack& undoStack() { return *undoStack_; }
  /// Says which objects no undo and no redo may touch, and which of their properties it may all the same; of
  /// none it is asked whether the object may go.
  using IsFixed = std::function<bool(const ManagedObject&, const PropertyDescriptor*)>;
  void setFixed(IsFixed isFixed) { isFixed_ = std::move(isFixed); }
  /// Says which objects hold together. One that does goes back as a whole or not at all, where going back in
  /// part would leave it with what does not belong together.
  void setWhole(std::function<bool(const ManagedObject&)> isWhole) { isWhole_ = std::move(isWhole); }

  /// A new object; `onInsert` has run.
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
  /// readable, out of every relationship, until the edit has been stored.
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
  /// Those for which an indexed boolean is true, in the order of insertion.
  template <class T>
  [[nodiscard]] Objects<T> flagged(const char* key) const {
    return Objects<T>(lookUpFlagged(T::descriptor(), key));
  }

 private:
  friend class ChangeSet;
  friend class Editing;
  friend class ManagedObject;
  friend class PersistentStore;
  friend class RelationshipKeeper;
  friend class StateTransfer;
  friend class StepBack;
  friend class UndoStack;

  struct DeletedRow {
    const EntityDescriptor* entity;
    qint64 id;
  };
  class Filling {
   public:
    explicit Filling(ObjectContext& context);
    ~Filling() { context_.filling_ = before_; }
    Filling(const Filling&) = delete;
    Filling& operator=(const Filling&) = delete;

   private:
    ObjectContext& context_;
    bool before_;
  };

  Result<void> runEdit(const QString& name, EditOptions options, const std::function<Result<void>()>& work);

  void makeTables();
  void makeRoom(const EntityDescriptor& entity, std::size_t count);
  ManagedObject& insertObject(const EntityDescriptor& entity, bool temporary);
  ManagedObject& adopt(OwnedObject object, qint64 id);
  /// An empty object under an identifier that none has; `onInsert` does not run.
  ManagedObject& insertWithID(const EntityDescriptor& entity, qint64 id);
  /// Puts an object back that has been taken out, as it was then.
  void putBack(OwnedObject object);
  /// Takes an object that is out of every relationship out of the document.
  OwnedObject takeOut(ManagedObject& object);
  /// Gives a property a value that it had before; a target that is not there is none.
  void restore(ManagedObject& object, const PropertyDescriptor& property, const PropertyValue& value);
  /// Objects that were taken out are no more.
  void destroy(std::vector<OwnedObject> objects);

  /// What an edit did is what the next commit writes.
  void noteForFile(const EditRecord& record);
  /// Writes what is outstanding, waiting so many milliseconds for another reader.
  Result<void> commit(int patience);
  void forgetChanges();

  /// Before and after every change of a property.
  void willChange(ManagedObject& object, const PropertyDescriptor& property);
  void hasChanged(ManagedObject& object, const PropertyDescriptor& property);
  void noteChange(ManagedObject& object);
  void markChanged(ManagedObject& object);

  /// Before objects that left are no more.
  void noteUnsettled(OrderedObjects& objects) { unsettled_.push_back(&objects); }
  void settle();

  [[nodiscard]] ObjectTable& table(const EntityDescriptor& entity) const;
  [[nodiscard]] ManagedObject* objectWithID(const EntityDescriptor& entity, qint64 id) const;
  [[nodiscard]] std::span<ManagedObject* const> objectsOf(const EntityDescriptor& entity) const;
  [[nodiscard]] std::span<ManagedObject* const> lookUp(const EntityDescriptor& entity, const char* key,
                                                       const QString& text) const;
  [[nodiscard]] std::span<ManagedObject* const> lookUpFlagged(const EntityDescriptor& entity,
                                                              const char* key) const;

  const ObjectModel& model_;
  const Clock& clock_;
  const Calendar& calendar_;
  std::vector<std::unique_ptr<ObjectTable>> tables_;
  std::vector<OrderedObjects*> unsettled_;  // ends of relationships that objects may have left unnoticed
  quint64 changeCount_ = 0;
  std::vector<ManagedObject*> changed_;
  std::vector<DeletedRow> deleted_;
  std::vector<OwnedObject> graveyard_;  // deleted outside of edits since the last save
  std::unique_ptr<PersistentStore> store_;
  std::unique_ptr<const FileMark> ahead_;  ///< what was read before it was opened

  std::unique_ptr<Editing> editing_;
  std::unique_ptr<UndoStack> undoStack_;
  IsFixed isFixed_;
  std::function<bool(const ManagedObject&)> isWhole_;
  bool editsRequired_ = false;
  bool filling_ = false;
  CommitState commitState_;
  Observers<const CommitState&> commitObservers_;
};

}  // namespace pendra
