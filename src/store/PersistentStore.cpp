#include "store/PersistentStore.h"

#include <QFileInfo>
#include <QTemporaryFile>
#include <cerrno>

#include "Connection.h"
#include "DocumentFile.h"
#include "Layouts.h"
#include "ObjectTable.h"
#include "RowStatements.h"
#include "platform/Files.h"
#include "store/ObjectContext.h"
#include "store/RelationshipKeeper.h"

namespace pendra {

namespace {

/// How long opening waits for another program that reads the file, in milliseconds.
constexpr int kOpenPatience = 2000;

/// A document whose identifiers have come so far was not made by counting.
constexpr qint64 kGreatestID = qint64{1} << 48;

constexpr auto kUsualPermissions =
    QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther;

void prepare(SQLite::Database& database) {
  database.exec("PRAGMA journal_mode=DELETE");
  database.exec("PRAGMA synchronous=EXTRA");
  database.exec("PRAGMA temp_store=MEMORY");
}

}  // namespace

struct PersistentStore::Parts {
  Parts(DocumentFile held, const ObjectModel& itsModel) : model(itsModel), file(std::move(held)) {}

  /// Opens the database where it is not open yet. The file stays held whatever becomes of that.
  Result<void> connect();
  void disconnect();
  Result<void> bringToNewestLayout();
  RowStatements& rowsOf(const EntityDescriptor& entity);

  const ObjectModel& model;
  DocumentFile file;
  std::unique_ptr<Connection> connection;
  std::vector<RowStatements> tables;
};

Result<void> PersistentStore::Parts::connect() {
  if (connection) return {};
  auto opened = Connection::open(file.path(), SQLite::OPEN_READWRITE, kOpenPatience);
  if (!opened) return opened.error();
  connection = std::move(opened).value();
  auto ready = connection->guarded([&] {
    layouts::checkPages(*connection);
    prepare(connection->database());
  });
  if (ready) ready = bringToNewestLayout();
  if (ready) {
    ready = connection->guarded([&] {
      for (const EntityDescriptor* entity : model.entities)
        tables.emplace_back(connection->database(), *entity);
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
  if (!upgraded) QFile::remove(copy);  // the document itself is still what the copy is
  return upgraded;
}

RowStatements& PersistentStore::Parts::rowsOf(const EntityDescriptor& entity) {
  return *std::find_if(tables.begin(), tables.end(),
                       [&](const RowStatements& rows) { return &rows.entity() == &entity; });
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
  auto parts = std::make_unique<Parts>(std::move(held).value(), model);
  if (auto connected = parts->connect(); !connected) return connected.error();
  return std::unique_ptr<PersistentStore>(new PersistentStore(std::move(parts)));
}

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
  return connection.guarded([&] { connection.database().exec("SELECT count(*) FROM sqlite_schema"); });
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

Result<void> PersistentStore::read(ObjectContext& context) {
  parts_->connection->allowReadingAll();
  return parts_->connection->guarded([&] {
    PendingLinks links;
    for (RowStatements& rows : parts_->tables) {
      rows.readAll(links, [&](std::unique_ptr<ManagedObject> object, qint64 id) -> ManagedObject& {
        if (id <= context.table(object->entity()).lastID() || id > kGreatestID) throwDamaged();
        return context.adopt(std::move(object), id);
      });
    }
    for (const PendingLink& link : links) {
      context.linkRead(*link.owner, *link.property, link.target);
    }
    for (const auto& table : context.tables_) {
      for (ManagedObject* object : table->objects()) RelationshipKeeper::squeeze(*object);
    }
  });
}

Result<void> PersistentStore::write(const ObjectContext& context, int patience) {
  const auto there = parts_->file.isStillThere();
  if (!there) return there.error();
  if (!there.value()) return writeAnew(context);
  if (!context.hasChanges()) {
    parts_->file.markStored();
    return {};
  }
  if (auto connected = parts_->connect(); !connected) return connected;
  return parts_->connection->guarded([&] {
    parts_->connection->database().setBusyTimeout(patience);
    writeChanges(context);
  });
}

void PersistentStore::writeChanges(const ObjectContext& context) {
  SQLite::Transaction transaction(parts_->connection->database(), SQLite::TransactionBehavior::IMMEDIATE);
  for (const auto& row : context.deleted_) {
    parts_->connection->allow(kStepsOfARow);
    parts_->rowsOf(*row.entity).erase(row.id);
  }
  for (ManagedObject* object : context.changed_) {
    parts_->connection->allow(kStepsOfARow);
    if (object->dirty_) parts_->rowsOf(object->entity()).write(*object);
  }
  transaction.commit();
}

Result<void> PersistentStore::writeAnew(const ObjectContext& context) {
  const QString path = parts_->file.path();
  QTemporaryFile draft(draftFor(path));
  if (!draft.open()) return Error{QStringLiteral("file"), draft.error(), draft.errorString()};
  draft.setPermissions(kUsualPermissions);
  auto made = open(draft.fileName(), parts_->model);
  if (!made) return made.error();
  Parts& anew = *made.value()->parts_;
  auto written = anew.connection->guarded([&] { made.value()->writeAll(context); });
  if (!written) return written;
  anew.disconnect();  // the database knows its files by name
  if (auto named = moveToFreeName(draft.fileName(), path); !named) return named;
  // From here on the new file is held and whole; where its database cannot be opened now, the next save does.
  anew.file.setPath(path);
  parts_ = std::move(made.value()->parts_);
  [[maybe_unused]] const auto connected = parts_->connect();
  return {};
}

void PersistentStore::writeAll(const ObjectContext& context) {
  SQLite::Transaction transaction(parts_->connection->database(), SQLite::TransactionBehavior::IMMEDIATE);
  for (const auto& table : context.tables_) {
    RowStatements& rows = parts_->rowsOf(table->entity());
    for (ManagedObject* object : table->objects()) {
      parts_->connection->allow(kStepsOfARow);
      if (!object->isTemporary()) rows.write(*object);
    }
  }
  transaction.commit();
}

}  // namespace pendra
