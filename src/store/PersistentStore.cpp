#include "store/PersistentStore.h"

#include <SQLiteCpp/Backup.h>
#include <sqlite3.h>

#include <QFileInfo>
#include <cerrno>
#include <future>

#include "Connection.h"
#include "DocumentFile.h"
#include "Layouts.h"
#include "ObjectTable.h"
#include "RowStatements.h"
#include "platform/Files.h"
#include "platform/Translation.h"
#include "store/ObjectContext.h"
#include "store/RelationshipKeeper.h"

namespace pendra {

namespace {

/// How long opening waits for another program that reads the file, in milliseconds.
constexpr int kOpenPatience = 2000;

/// A document whose identifiers have come so far was not made by counting.
constexpr qint64 kGreatestID = qint64{1} << 48;

const QString kInMemory = QStringLiteral(":memory:");

const QString kDisplaced = QStringLiteral("displaced");

Error displacedError(Displaced why, const QString& text) { return {kDisplaced, static_cast<int>(why), text}; }

Error replacedError() {
  return displacedError(Displaced::Replaced, tr("another version has taken its place"));
}

Error errorOf(Whereabouts whereabouts) {
  switch (whereabouts) {
    case Whereabouts::Moved:
      return displacedError(Displaced::Moved, tr("it was moved"));
    case Whereabouts::OutOfReach:
      return displacedError(Displaced::OutOfReach, tr("its folder or disk is not there"));
    default:
      return replacedError();
  }
}

void prepare(SQLite::Database& database) {
  database.exec("PRAGMA journal_mode=DELETE");
  database.exec("PRAGMA synchronous=EXTRA");
  database.exec("PRAGMA temp_store=MEMORY");
}

/// When every page of a file is looked at for damage.
enum class Pages { BeforeAll, WithTheRows };

/// Being the first to read, it takes back what a save that was killed has left.
void readFirstPage(Connection& connection) {
  connection.database().exec("SELECT count(*) FROM sqlite_schema");
}

bool holdsMany(const EntityDescriptor& entity) {
  return std::any_of(entity.properties.begin(), entity.properties.end(),
                     [](const PropertyDescriptor& property) { return property.kind == Kind::ToMany; });
}

}  // namespace

struct PersistentStore::Parts {
  Parts(DocumentFile held, const ObjectModel& itsModel) : model(itsModel), file(std::move(held)) {}

  /// Opens the database where it is not open yet. The file stays held whatever becomes of that.
  Result<void> connect(Pages pages = Pages::BeforeAll);
  void disconnect();
  Result<void> bringToNewestLayout();
  void prepareRows();
  RowStatements& rowsOf(const EntityDescriptor& entity);
  /// Whether nobody else has written to the file. What a save of ours has left half written is taken back
  /// first.
  [[nodiscard]] bool isOurs() const;
  void write(ManagedObject& object);
  void writeAll(const ObjectContext& context);
  void writeChanges(const ObjectContext& context);

  const ObjectModel& model;
  DocumentFile file;
  std::unique_ptr<Connection> connection;
  std::vector<RowStatements> tables;
  QByteArray state;    ///< that of the file after our last save
  QString layoutCopy;  ///< kept before the file got the newest layout
};

Result<void> PersistentStore::Parts::connect(Pages pages) {
  if (connection) return {};
  auto opened = Connection::open(file.path(), SQLite::OPEN_READWRITE, kOpenPatience);
  if (!opened) return opened.error();
  connection = std::move(opened).value();
  auto ready = connection->guarded([&] {
    readFirstPage(*connection);
    // Nothing is brought to another layout that may be damaged.
    const bool isOlder = layouts::numberOf(*connection) < model.newestLayout();
    if (pages == Pages::BeforeAll || isOlder) layouts::checkPages(*connection);
    prepare(connection->database());
  });
  if (ready) ready = bringToNewestLayout();
  if (ready) {
    ready = connection->guarded([&] {
      prepareRows();
      state = file.state();
    });
  }
  if (!ready) disconnect();
  return ready;
}

void PersistentStore::Parts::disconnect() {
  tables.clear();
  connection.reset();
}

Result<void> PersistentStore::Parts::bringToNewestLayout() {
  if (file.size() == 0) return connection->guarded([&] { layouts::create(*connection, model); });
  const int layout = layouts::numberOf(*connection);
  if (layout >= model.newestLayout()) {
    return connection->guarded([&] { layouts::checkColumns(*connection, model); });
  }
  const QString copy = pathOfLayoutCopy(file.path(), layout);
  if (auto kept = copyFile(file.path(), copy, Existing::Keep); !kept) return kept;
  auto upgraded = connection->guarded([&] { layouts::upgrade(*connection, model); });
  if (upgraded) {
    layoutCopy = copy;
  } else {
    QFile::remove(copy);  // the document itself is still what the copy is
  }
  return upgraded;
}

void PersistentStore::Parts::prepareRows() {
  for (const EntityDescriptor* entity : model.entities) tables.emplace_back(connection->database(), *entity);
}

RowStatements& PersistentStore::Parts::rowsOf(const EntityDescriptor& entity) {
  return *std::find_if(tables.begin(), tables.end(),
                       [&](const RowStatements& rows) { return &rows.entity() == &entity; });
}

bool PersistentStore::Parts::isOurs() const {
  readFirstPage(*connection);
  return file.state() == state;
}

void PersistentStore::Parts::write(ManagedObject& object) {
  connection->allow(kStepsOfARow);
  rowsOf(object.entity()).write(object);
}

PersistentStore::PersistentStore(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}
PersistentStore::~PersistentStore() = default;

Result<std::unique_ptr<PersistentStore>> PersistentStore::open(const QString& path,
                                                               const ObjectModel& model) {
  auto held = DocumentFile::hold(path);
  if (!held) return held.error();
  if (!held.value().isEmpty()) {
    if (auto known = held.value().layout(model.newestLayout()); !known) return known.error();
  }
  if (!isDraft(path)) removeAbandonedDrafts(QFileInfo(held.value().path()).path());
  auto parts = std::make_unique<Parts>(std::move(held).value(), model);
  if (auto connected = parts->connect(Pages::WithTheRows); !connected) return connected.error();
  return std::unique_ptr<PersistentStore>(new PersistentStore(std::move(parts)));
}

namespace {

/// The database as it was last saved, in memory.
Result<std::unique_ptr<Connection>> copyInMemory(const QString& path) {
  auto source = Connection::open(path, SQLite::OPEN_READONLY, kOpenPatience);
  if (!source) return source.error();
  auto copy = Connection::open(kInMemory, SQLite::OPEN_READWRITE, 0);
  if (!copy) return copy.error();
  const auto copied = source.value()->guarded([&] {
    // The first reading of all, whose failure says more than that of the backup.
    readFirstPage(*source.value());
    SQLite::Backup backup(copy.value()->database(), source.value()->database());
    if (const int code = backup.executeStep(); code != SQLite::OK && code != SQLITE_DONE) {
      throw SQLite::Exception("it could not be read", code);
    }
  });
  if (!copied && copied.error().code == SQLITE_READONLY_ROLLBACK) {
    return Error{QStringLiteral("document"), 0,
                 tr("a save of it was cut off, which is mended when Pendra opens it")};
  }
  if (!copied) return copied.error();
  return copy;
}

}  // namespace

Result<void> PersistentStore::look(const QString& path, ObjectContext& context, const ObjectModel& model) {
  auto file = DocumentFile::look(path);
  if (!file) return file.error();
  if (auto known = file.value().layout(model.newestLayout()); !known) return known.error();
  auto copy = copyInMemory(file.value().path());
  if (!copy) return copy.error();
  auto parts = std::make_unique<Parts>(std::move(file).value(), model);
  parts->connection = std::move(copy).value();
  auto ready = parts->connection->guarded([&] {
    Connection& connection = *parts->connection;
    layouts::checkPages(connection);
    if (layouts::numberOf(connection) < model.newestLayout()) layouts::upgrade(connection, model);
    layouts::checkColumns(connection, model);
    parts->prepareRows();
  });
  if (!ready) return ready;
  auto read = PersistentStore(std::move(parts)).readRows(context);
  if (!read) context.makeTables();  // half a document is none
  return read;
}

namespace {

Error notReadAhead() { return {QStringLiteral("document"), 0, tr("whoever opens it has more to do")}; }

}  // namespace

Result<FileMark> PersistentStore::readAhead(const QString& path, ObjectContext& context,
                                            const ObjectModel& model, const std::stop_token& stop) {
  auto file = DocumentFile::look(path);
  if (!file) return file.error();
  if (NameLock::mayBeHeld(file.value().path())) return notReadAhead();
  auto layout = file.value().layout(model.newestLayout());
  if (!layout) return layout.error();
  if (layout.value() != model.newestLayout()) return notReadAhead();
  auto opened = Connection::open(file.value().path(), SQLite::OPEN_READONLY, 0);
  if (!opened) return opened.error();
  auto parts = std::make_unique<Parts>(std::move(file).value(), model);
  parts->connection = std::move(opened).value();
  parts->connection->endAt(stop);
  auto ready = parts->connection->guarded([&] {
    parts->connection->database().exec("BEGIN");  // nobody writes to it until the connection is closed
    readFirstPage(*parts->connection);
    layouts::checkColumns(*parts->connection, model);
    parts->prepareRows();
  });
  if (!ready) return ready.error();
  FileMark mark = parts->file.mark();
  PersistentStore store(std::move(parts));
  if (auto read = store.readRows(context); !read) return read.error();
  return mark;
}

bool PersistentStore::isStill(const FileMark& mark) const { return parts_->file.mark() == mark; }

Result<void> PersistentStore::check(const QString& path, const ObjectModel& model) {
  auto held = DocumentFile::hold(path);
  if (!held) return held.error();
  if (auto known = held.value().layout(model.newestLayout()); !known) return known.error();
  auto opened = Connection::open(path, SQLite::OPEN_READONLY, kOpenPatience);
  if (!opened) return opened.error();
  Connection& connection = *opened.value();
  return connection.guarded([&] {
    layouts::checkPages(connection);
    layouts::checkColumns(connection, model);
  });
}

Result<Tally> PersistentStore::tally(const QString& path, const EntityDescriptor& entity,
                                     const char* number) {
  auto opened = Connection::open(path, SQLite::OPEN_READONLY, kOpenPatience);
  if (!opened) return opened.error();
  Connection& connection = *opened.value();
  connection.allowReadingAll();
  return connection.guarded([&] {
    const auto quoted = [](const char* name) { return '"' + std::string(name) + '"'; };
    SQLite::Statement sums(connection.database(),
                           "SELECT count(*), total(" + quoted(number) + ") FROM " + quoted(entity.name));
    sums.executeStep();
    return Tally{sums.getColumn(0).getInt64(), sums.getColumn(1).getDouble()};
  });
}

Result<void> PersistentStore::recover(const QString& path, const ObjectModel& model) {
  if (!QFileInfo::exists(path)) return systemError(ENOENT);
  auto held = DocumentFile::hold(path);
  if (!held) return held.error();
  if (!held.value().isEmpty()) {
    if (auto known = held.value().layout(model.newestLayout()); !known) return known.error();
  }
  if (!QFileInfo::exists(journalOf(path))) return {};
  auto opened = Connection::open(path, SQLite::OPEN_READWRITE, kOpenPatience);
  if (!opened) return opened.error();
  Connection& connection = *opened.value();
  return connection.guarded([&] { readFirstPage(connection); });
}

Result<void> PersistentStore::discard(const QString& path) {
  if (!QFileInfo::exists(path)) return systemError(ENOENT);
  auto held = DocumentFile::hold(path);
  if (!held) return held.error();
  if (!QFile::remove(path)) return systemError(errno);
  return {};
}

QString journalOf(const QString& document) { return document + u"-journal"; }

QString pathOfLayoutCopy(const QString& document, int layout) {
  const QFileInfo file(document);
  return firstFreePath(
      file.path() + u'/' + file.completeBaseName() + u" (layout " + QString::number(layout) + u')',
      QStringLiteral("pdrbackup"));
}

Result<void> PersistentStore::checkPages(const QString& path) {
  auto opened = Connection::open(path, SQLite::OPEN_READONLY, kOpenPatience);
  if (!opened) return opened.error();
  Connection& connection = *opened.value();
  return connection.guarded([&] { layouts::checkPages(connection); });
}

Result<void> PersistentStore::read(ObjectContext& context) {
  // Each of the two takes long in a large document, and neither waits for the other: rows of damaged pages
  // are refused as well, or come to nothing with the whole document.
  auto pages = std::async(&PersistentStore::checkPages, path());
  auto rows = readRows(context);
  auto whole = pages.get();
  return whole ? rows : whole;
}

Result<void> PersistentStore::readRows(ObjectContext& context) {
  parts_->connection->allowReadingAll();
  return parts_->connection->guarded([&] {
    makeObjects(context);
    for (const auto& table : context.tables_) {
      if (!holdsMany(table->entity())) continue;
      for (ManagedObject* object : table->objects()) RelationshipKeeper::squeeze(*object);
    }
    parts_->connection->database().exec("PRAGMA shrink_memory");
  });
}

void PersistentStore::makeObjects(ObjectContext& context) {
  struct Link {
    ManagedObject* owner;
    RowStatements::ToOne ends;
    qint64 target;
  };
  std::vector<Link> links;  // to tables that are read later
  // A target that is not there leaves none.
  const auto tie = [](const ObjectTable& targets, const Link& link) {
    ManagedObject* target = targets.withID(link.target);
    if (target) RelationshipKeeper::link(*link.owner, *link.ends.property, *link.ends.inverse, *target);
  };
  const auto link = [&](ManagedObject& owner, const RowStatements::ToOne& ends, qint64 target) {
    const ObjectTable& targets = context.table(ends.property->target());
    if (targets.lastID() < target) return links.push_back({&owner, ends, target});
    tie(targets, {&owner, ends, target});
  };
  for (RowStatements& rows : parts_->tables) {
    const ObjectTable& home = context.table(rows.entity());
    const auto adopt = [&](OwnedObject object, qint64 id) -> ManagedObject& {
      if (id <= home.lastID() || id > kGreatestID) throwDamaged();
      return context.adopt(std::move(object), id);
    };
    rows.readAll(adopt, link);
  }
  for (const Link& late : links) tie(context.table(late.ends.property->target()), late);
}

// ---- writing

std::optional<Displaced> displaced(const Error& error) {
  return error.domain == kDisplaced ? std::optional(static_cast<Displaced>(error.code)) : std::nullopt;
}

const QString& PersistentStore::layoutCopy() const { return parts_->layoutCopy; }
const QString& PersistentStore::path() const { return parts_->file.path(); }
bool PersistentStore::isWritable() const { return parts_->file.isWritable(); }
bool PersistentStore::isLocked() const { return parts_->file.isLocked(); }
QString PersistentStore::movedTo() const { return parts_->file.movedTo(); }

Result<void> PersistentStore::write(const ObjectContext& context, int patience) {
  if (auto found = findFile(context); !found) return found;
  if (auto written = writeToFile(context, patience); !written) return written;
  // Whoever puts another file in the place may do so in the middle of a save.
  const Whereabouts now = parts_->file.whereabouts();
  if (now != Whereabouts::InPlace && context.hasChanges()) return errorOf(now);
  if (!context.hasChanges()) parts_->file.markStored();
  return {};
}

Result<void> PersistentStore::findFile(const ObjectContext& context) {
  const Whereabouts whereabouts = parts_->file.whereabouts();
  if (whereabouts == Whereabouts::InPlace) return {};
  if (whereabouts == Whereabouts::Deleted) {
    auto made = moveTo(context, path(), Existing::Keep);
    if (made) ++story_.madeAnew;
    return made;
  }
  if (whereabouts != Whereabouts::Replaced) return errorOf(whereabouts);
  // The database goes on with the file that it had, so it is opened anew.
  if (!parts_->file.takeOver()) return replacedError();
  parts_->disconnect();
  ++story_.takenOver;
  return {};
}

Result<void> PersistentStore::writeToFile(const ObjectContext& context, int patience) {
  if (auto connected = parts_->connect(); !connected) return connected;
  bool isOurs = true;
  auto written = parts_->connection->guarded([&] {
    SQLite::Database& database = parts_->connection->database();
    database.setBusyTimeout(patience);
    if (!context.hasChanges()) {
      isOurs = parts_->isOurs();
      return;
    }
    SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
    isOurs = parts_->isOurs();
    if (!isOurs) return;
    parts_->writeChanges(context);
    transaction.commit();
    parts_->state = parts_->file.state();
  });
  if (!written && !isDamaged(written.error())) return written;
  if (written && isOurs) return {};
  return displacedError(Displaced::Replaced,
                        written ? tr("another program has changed it") : written.error().text);
}

void PersistentStore::Parts::writeChanges(const ObjectContext& context) {
  for (const auto& row : context.deleted_) {
    connection->allow(kStepsOfARow);
    rowsOf(*row.entity).erase(row.id);
  }
  for (ManagedObject* object : context.changed_) {
    if (object->dirty_) write(*object);
  }
}

void PersistentStore::Parts::writeAll(const ObjectContext& context) {
  SQLite::Transaction transaction(connection->database(), SQLite::TransactionBehavior::IMMEDIATE);
  for (const auto& table : context.tables_) {
    for (ManagedObject* object : table->objects()) {
      if (!object->isTemporary()) write(*object);
    }
  }
  transaction.commit();
}

// ---- writing elsewhere

Result<std::unique_ptr<PersistentStore::Parts>> PersistentStore::writeDraft(const ObjectContext& context,
                                                                            const Draft& draft,
                                                                            const ObjectModel& model) {
  auto made = open(draft.name(), model);
  if (!made) return made.error();
  auto parts = std::move(made.value()->parts_);
  if (auto written = parts->connection->guarded([&] { parts->writeAll(context); }); !written) {
    return written.error();
  }
  parts->disconnect();  // the database knows its files by name
  return parts;
}

Result<void> PersistentStore::writeCopy(const ObjectContext& context, const QString& path,
                                        Existing existing) const {
  Draft draft(path);
  if (auto opened = draft.open(); !opened) return opened;
  if (auto made = writeDraft(context, draft, parts_->model); !made) {
    QFile::remove(journalOf(draft.name()));  // the database leaves it where it could not tell that it went
    return made.error();
  }
  return draft.finish(existing);
}

Result<void> PersistentStore::moveTo(const ObjectContext& context, const QString& path, Existing existing) {
  const QString place = realPath(path);
  const bool isOwnPlace = place == parts_->file.path();
  auto lock = isOwnPlace ? Result<NameLock>(NameLock()) : NameLock::take(place);
  if (!lock) return lock.error();
  Draft draft(place);
  if (auto opened = draft.open(); !opened) return opened;
  draft.setMode(parts_->file.mode());
  auto made = writeDraft(context, draft, parts_->model);
  if (!made) return made.error();
  parts_->disconnect();  // a journal of its own is gone with that; another would be read as the new file's
  if (QFile::exists(journalOf(place)) && !QFile::remove(journalOf(place))) return systemError(errno);
  if (auto named = draft.finish(existing); !named) return named;
  // From here on the new file is held and whole; where its database cannot be opened now, the next save does.
  made.value()->file.setPlace(place, isOwnPlace ? parts_->file.takeLock() : std::move(lock).value());
  parts_ = std::move(made).value();
  [[maybe_unused]] const auto connected = parts_->connect();
  return {};
}

Result<void> PersistentStore::follow() {
  const QString place = movedTo();
  if (place.isEmpty()) return errorOf(Whereabouts::OutOfReach);
  parts_->disconnect();
  std::ignore = parts_->file.takeLock();  // it may have been moved with the folder
  auto lock = NameLock::take(place);
  if (!lock) return lock.error();
  parts_->file.setPlace(place, std::move(lock).value());
  return parts_->connect();
}

}  // namespace pendra
