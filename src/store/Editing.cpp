#include "Editing.h"

#include "store/ObjectContext.h"
#include "store/RelationshipKeeper.h"
#include "store/UndoStack.h"

namespace pendra {

namespace {

int editsInProgress = 0;

bool comesBefore(const PropertyChange& a, const PropertyChange& b) {
  return std::pair(a.object, a.property) < std::pair(b.object, b.property);
}

}  // namespace

bool editInProgress() { return editsInProgress > 0; }

void promise(bool kept, const char* what) {
  if (!kept) qFatal("broken: %s", what);
}

const PropertyChange* EditRecord::changeOf(const ManagedObject& object,
                                           const PropertyDescriptor& property) const {
  const PropertyChange wanted{const_cast<ManagedObject*>(&object), &property, {}, {}};
  const auto found = std::lower_bound(changes.begin(), changes.end(), wanted, comesBefore);
  return found != changes.end() && !comesBefore(wanted, *found) ? &*found : nullptr;
}

/// Counts an edit as running for as long as it lives.
class Editing::Running {
 public:
  explicit Running(Editing& editing) : editing_(editing) {
    ++editing_.depth_;
    ++editsInProgress;
  }
  ~Running() {
    --editing_.depth_;
    --editsInProgress;
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  Editing& editing_;
};

Result<void> Editing::run(const QString& name, EditOptions options, const Work& work) {
  promise(!announcing_, "whoever is told of an edit does not edit");
  const Running running(*this);
  auto done = attempt(work);
  if (!done || depth_ > 1) return done;
  EditRecord record = balance(name);
  if (record.isEmpty()) return {};
  record.isIndivisible = options.indivisible;
  announceAndStore(record);
  if (options.undoable) {
    context_.undoStack_->push(std::move(record));
  } else {
    context_.destroy(std::move(record.deleted));
  }
  return {};
}

EditRecord Editing::runBack(const QString& name, const std::function<void()>& work) {
  promise(!isRunning(), "nothing is taken back inside an edit");
  const Running running(*this);
  work();
  EditRecord record = balance(name);
  if (!record.isEmpty()) announceAndStore(record);
  return record;
}

Result<void> Editing::attempt(const Work& work) {
  const std::size_t mark = entries_.size();
  try {
    auto done = work();
    if (!done) rollBack(mark);
    return done;
  } catch (...) {
    rollBack(mark);
    throw;
  }
}

void Editing::rollBack(std::size_t mark) {
  std::vector<OwnedObject> gone;
  rollingBack_ = true;
  while (entries_.size() > mark) {
    const Entry last = std::move(entries_.back());
    entries_.pop_back();
    takeBack(last, gone);
  }
  rollingBack_ = false;
  context_.destroy(std::move(gone));
}

void Editing::takeBack(const Entry& entry, std::vector<OwnedObject>& gone) {
  switch (entry.deed) {
    case Deed::Changed:
      return context_.restore(*entry.object, *entry.property, entry.before);
    case Deed::Inserted:
      entry.object->cameInEdit_ = false;
      gone.push_back(context_.takeOut(*entry.object));
      return;
    case Deed::Deleted:
      entry.object->wentInEdit_ = false;
      context_.putBack(std::move(gone_.back()));
      gone_.pop_back();
      return;
  }
}

bool Editing::records(const ManagedObject& object) const {
  return isRunning() && !rollingBack_ && !object.isTemporary();
}

void Editing::mustBeAllowed(const ManagedObject& object) const {
  promise(!announcing_, "whoever is told of an edit does not edit");
  promise(isRunning() || context_.filling_ || !context_.editsRequired_ || object.isTemporary(),
          "a document changes in an edit");
}

void Editing::willChange(ManagedObject& object, const PropertyDescriptor& property) {
  mustBeAllowed(object);
  if (records(object)) entries_.push_back({Deed::Changed, &object, &property, valueOf(object, property)});
}

void Editing::inserted(ManagedObject& object) {
  mustBeAllowed(object);
  if (!records(object)) return;
  object.cameInEdit_ = true;
  entries_.push_back({Deed::Inserted, &object});
}

void Editing::deleted(OwnedObject object) {
  object->wentInEdit_ = true;
  entries_.push_back({Deed::Deleted, object.get()});
  gone_.push_back(std::move(object));
}

EditRecord Editing::balance(const QString& name) {
  EditRecord record;
  record.name = name;
  settleChanges(record);
  settleObjects(record);
  entries_ = {};  // the room too: many a change is never made again
  return record;
}

void Editing::settleChanges(EditRecord& record) {
  std::vector<Entry*> changes;  // of objects that were there before
  for (Entry& entry : entries_) {
    if (entry.deed == Deed::Changed && !entry.object->cameInEdit_) changes.push_back(&entry);
  }
  std::stable_sort(changes.begin(), changes.end(), [](const Entry* a, const Entry* b) {
    return std::pair(a->object, a->property) < std::pair(b->object, b->property);
  });
  const Entry* last = nullptr;
  for (Entry* entry : changes) {
    // The first change of a property knows what the edit has found.
    const Entry* before = std::exchange(last, entry);
    if (before && before->object == entry->object && before->property == entry->property) continue;
    PropertyValue after = valueOf(*entry->object, *entry->property);
    if (after == entry->before) continue;
    record.changes.push_back({entry->object, entry->property, std::move(entry->before), std::move(after)});
  }
  record.changes.shrink_to_fit();
}

void Editing::settleObjects(EditRecord& record) {
  for (const Entry& entry : entries_) {
    if (entry.deed == Deed::Inserted && !entry.object->wentInEdit_) record.inserted.push_back(entry.object);
  }
  std::vector<OwnedObject> passing;
  for (auto& object : std::exchange(gone_, {})) {
    object->wentInEdit_ = false;
    auto& home = object->cameInEdit_ ? passing : record.deleted;
    object->cameInEdit_ = false;
    home.push_back(std::move(object));
  }
  record.deleted.shrink_to_fit();
  for (ManagedObject* object : record.inserted) object->cameInEdit_ = false;
  context_.destroy(std::move(passing));
}

void Editing::announceAndStore(const EditRecord& record) {
  context_.noteForFile(record);
  announcing_ = true;
  observers_.tell(ChangeSet(context_, record));
  announcing_ = false;
  // A failure stands in the commit's state; what it could not write is written with the next edit or save.
  if (context_.store_) [[maybe_unused]]
    const auto stored = context_.commit(kPatience);
}

}  // namespace pendra
