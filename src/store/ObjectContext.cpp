#include "store/ObjectContext.h"

#include "Attributes.h"
#include "DocumentFile.h"
#include "Editing.h"
#include "ObjectTable.h"
#include "platform/Translation.h"
#include "store/PersistentStore.h"
#include "store/RelationshipKeeper.h"
#include "store/UndoStack.h"

namespace pendra {

namespace {

/// How long a save waits for another program that reads the file, in milliseconds.
constexpr int kSavePatience = 2000;

}  // namespace

ObjectContext::Filling::Filling(ObjectContext& context)
    : context_(context), before_(std::exchange(context.filling_, true)) {
  promise(!context.editing_->isRunning(), "a document is filled outside of edits");
}

ObjectContext::ObjectContext(const ObjectModel& model, const Clock& clock, const Calendar& calendar)
    : model_(model),
      clock_(clock),
      calendar_(calendar),
      editing_(std::make_unique<Editing>(*this)),
      undoStack_(std::make_unique<UndoStack>(*this)) {
  makeTables();
}

ObjectContext::~ObjectContext() { settle(); }

void ObjectContext::makeTables() {
  tables_.clear();
  for (const EntityDescriptor* entity : model_.entities) {
    tables_.push_back(std::make_unique<ObjectTable>(*entity));
  }
}

void ObjectContext::makeRoom(const EntityDescriptor& entity, std::size_t count) {
  table(entity).makeRoom(count);
}

Result<void> ObjectContext::open(const QString& path) {
  auto opened = PersistentStore::open(path, model_);
  if (!opened) return opened.error();
  store_ = std::move(opened).value();
  const auto ahead = std::exchange(ahead_, nullptr);
  if (ahead && store_->isStill(*ahead)) return {};
  makeTables();  // what was read of another file, or before it changed, is not this document
  auto read = store_->read(*this);
  if (!read) {
    makeTables();  // half a document is none
    store_.reset();
  }
  return read;
}

Result<void> ObjectContext::readAhead(const QString& path, const std::stop_token& stop) {
  auto read = PersistentStore::readAhead(path, *this, model_, stop);
  if (!read) {
    makeTables();
    return read.error();
  }
  ahead_ = std::make_unique<const FileMark>(std::move(read).value());
  return {};
}

void ObjectContext::close() { store_.reset(); }

Result<void> ObjectContext::save() { return commit(kSavePatience); }
Result<void> ObjectContext::trySave() { return commit(Editing::kPatience); }

std::size_t ObjectContext::numberOfUnsaved() const {
  const auto dirty =
      std::count_if(changed_.begin(), changed_.end(), [](const auto* one) { return one->dirty_; });
  return deleted_.size() + static_cast<std::size_t>(dirty);
}

Result<void> ObjectContext::commit(int patience) {
  if (!store_) return Error{QStringLiteral("document"), 0, tr("the document has no readable file")};
  auto written = store_->write(*this, patience);
  if (written) {
    forgetChanges();
    commitState_ = {.savedAt = clock_.now(), .failure = {}};
  } else {
    const Instant since = commitState_.failure ? commitState_.failure->since : clock_.now();
    commitState_.failure = {since, written.error()};
  }
  commitObservers_.tell(commitState_);
  return written;
}

void ObjectContext::forgetChanges() {
  for (ManagedObject* object : changed_) object->dirty_ = false;
  changed_.clear();
  deleted_.clear();
  destroy(std::exchange(graveyard_, {}));
}

Result<void> ObjectContext::runEdit(const QString& name, EditOptions options,
                                    const std::function<Result<void>()>& work) {
  return editing_->run(name, options, work);
}

Subscription ObjectContext::observe(std::function<void(const ChangeSet&)> told) {
  return editing_->observe(std::move(told));
}

void ObjectContext::noteForFile(const EditRecord& record) {
  for (const auto& object : record.deleted) deleted_.push_back({&object->entity(), object->id_});
  // What has gone is written no more, and may be no more before the file can be written again.
  std::erase_if(changed_, [](const ManagedObject* object) { return object->deleted_; });
  for (ManagedObject* object : record.inserted) markChanged(*object);
  for (const PropertyChange& change : record.changes) {
    if (!change.object->deleted_) markChanged(*change.object);
  }
}

ManagedObject& ObjectContext::insertObject(const EntityDescriptor& entity, bool temporary) {
  auto made = entity.make();
  made->temporary_ = temporary;
  ManagedObject& object = adopt(std::move(made), table(entity).lastID() + 1);
  editing_->inserted(object);
  noteChange(object);
  object.onInsert();
  return object;
}

ManagedObject& ObjectContext::adopt(OwnedObject object, qint64 id) {
  ManagedObject& adopted = *object;
  ObjectTable& home = table(adopted.entity());
  Q_ASSERT_X(id > home.lastID(), home.entity().name, "objects come in ascending order");
  adopted.id_ = id;
  adopted.context_ = this;
  home.add(std::move(object));
  return adopted;
}

ManagedObject& ObjectContext::insertWithID(const EntityDescriptor& entity, qint64 id) {
  auto made = entity.make();
  ManagedObject& object = *made;
  object.id_ = id;
  putBack(std::move(made));
  return object;
}

void ObjectContext::putBack(OwnedObject object) {
  ManagedObject& back = *object;
  back.deleted_ = false;
  back.context_ = this;
  table(back.entity()).add(std::move(object));
  editing_->inserted(back);
  noteChange(back);
}

void ObjectContext::deleteObject(ManagedObject& object) {
  if (object.deleted_ || object.context_ != this) return;
  object.deleted_ = true;  // first, so that a cascade that comes back ends here
  for (const PropertyDescriptor& property : object.entity().properties) {
    if (property.deleteRule != DeleteRule::Cascade) continue;
    for (ManagedObject* target : Objects<ManagedObject>(property.access.toMany(object).targets()).copy()) {
      deleteObject(*target);
    }
  }
  RelationshipKeeper::detach(object);
  auto gone = takeOut(object);
  if (editing_->records(object)) {
    editing_->deleted(std::move(gone));
  } else {
    if (!object.temporary_) deleted_.push_back({&object.entity(), object.id_});
    graveyard_.push_back(std::move(gone));
  }
}

OwnedObject ObjectContext::takeOut(ManagedObject& object) {
  ++changeCount_;
  object.deleted_ = true;
  object.dirty_ = false;  // it stays listed as changed until the next save, which passes it over
  object.context_ = nullptr;
  return table(object.entity()).take(object);
}

void ObjectContext::restore(ManagedObject& object, const PropertyDescriptor& property,
                            const PropertyValue& value) {
  if (property.kind == Kind::ToOne) {
    const qint64* id = std::get_if<qint64>(&value);
    return RelationshipKeeper::relate(object, property, id ? objectWithID(property.target(), *id) : nullptr);
  }
  willChange(object, property);
  setAttribute(object, property, value);
  hasChanged(object, property);
}

void ObjectContext::destroy(std::vector<OwnedObject> objects) {
  if (objects.empty()) return;
  settle();
  undoStack_->forget(objects);
  objects.clear();  // not before nothing points to them any more
}

void ObjectContext::settle() {
  for (const auto& table : tables_) table->settle();
  for (const OrderedObjects* objects : std::exchange(unsettled_, {})) objects->settle();
}

void ObjectContext::willChange(ManagedObject& object, const PropertyDescriptor& property) {
  editing_->willChange(object, property);
  if (property.indexed) table(object.entity()).removeFromIndex(object, property);
}

void ObjectContext::hasChanged(ManagedObject& object, const PropertyDescriptor& property) {
  if (property.indexed) table(object.entity()).addToIndex(object, property);
  noteChange(object);
}

void ObjectContext::noteChange(ManagedObject& object) {
  ++changeCount_;
  if (!editing_->isRunning()) markChanged(object);
}

void ObjectContext::markChanged(ManagedObject& object) {
  if (object.dirty_ || object.temporary_) return;
  object.dirty_ = true;
  changed_.push_back(&object);
}

ObjectTable& ObjectContext::table(const EntityDescriptor& entity) const {
  const auto found = std::find_if(tables_.begin(), tables_.end(),
                                  [&](const auto& one) { return &one->entity() == &entity; });
  Q_ASSERT_X(found != tables_.end(), entity.name, "an entity outside the model");
  return **found;
}

ManagedObject* ObjectContext::objectWithID(const EntityDescriptor& entity, qint64 id) const {
  return table(entity).withID(id);
}

std::span<ManagedObject* const> ObjectContext::objectsOf(const EntityDescriptor& entity) const {
  return table(entity).objects();
}

std::span<ManagedObject* const> ObjectContext::lookUp(const EntityDescriptor& entity, const char* key,
                                                      const QString& text) const {
  return table(entity).matching(key, text);
}

std::span<ManagedObject* const> ObjectContext::lookUpFlagged(const EntityDescriptor& entity,
                                                             const char* key) const {
  return table(entity).flagged(key);
}

}  // namespace pendra
