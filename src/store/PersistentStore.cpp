#include "store/PersistentStore.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include "DocumentFile.h"
#include "RowStatements.h"
#include "store/ObjectContext.h"

namespace pendra {

namespace {

/// How long a save waits for another program that reads the file, in milliseconds.
constexpr int kBusyMilliseconds = 2000;

Error storeError(const SQLite::Exception& failure) {
  return {QStringLiteral("SQLite"), failure.getExtendedErrorCode(), QString::fromUtf8(failure.what())};
}

/// Runs what may throw the database's exception and hands its failure on as a value.
template <class Work>
auto guarded(const Work& work) -> Result<decltype(work())> {
  try {
    if constexpr (std::is_void_v<decltype(work())>) {
      work();
      return {};
    } else {
      return work();
    }
  } catch (const SQLite::Exception& failure) {
    return storeError(failure);
  }
}

void prepareConnection(SQLite::Database& database) {
  database.exec("PRAGMA journal_mode=DELETE");
  database.exec("PRAGMA synchronous=FULL");
  database.exec("PRAGMA temp_store=MEMORY");
}

void createTables(SQLite::Database& database, const QByteArray& schema) {
  SQLite::Transaction transaction(database);
  database.exec(schema.constData());
  database.exec("PRAGMA application_id=" + std::to_string(kApplicationID));
  database.exec("PRAGMA user_version=" + std::to_string(kLayoutVersion));
  transaction.commit();
}

void checkWhole(SQLite::Database& database) {
  SQLite::Statement check(database, "PRAGMA quick_check(1)");
  if (check.executeStep() && check.getColumn(0).getString() != "ok") {
    throw SQLite::Exception("the file is damaged", SQLITE_CORRUPT);
  }
}

}  // namespace

struct PersistentStore::Parts {
  DocumentFile file;
  SQLite::Database database;
  std::vector<RowStatements> tables;
};

PersistentStore::PersistentStore(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}
PersistentStore::~PersistentStore() = default;

Result<std::unique_ptr<PersistentStore>> PersistentStore::open(const QString& path,
                                                               const ObjectModel& model) {
  auto held = DocumentFile::hold(path);
  if (!held) return held.error();
  const bool isNew = held.value().isEmpty();
  if (!isNew) {
    if (auto known = held.value().looksLikeADocument(); !known) return known.error();
  }
  return guarded([&] {
    auto parts = std::unique_ptr<Parts>(
        new Parts{std::move(held).value(),
                  SQLite::Database(path.toUtf8().constData(), SQLite::OPEN_READWRITE, kBusyMilliseconds),
                  {}});
    prepareConnection(parts->database);
    if (isNew) {
      createTables(parts->database, model.schema);
    } else {
      checkWhole(parts->database);
    }
    for (const EntityDescriptor* entity : model.entities)
      parts->tables.emplace_back(parts->database, *entity);
    return std::unique_ptr<PersistentStore>(new PersistentStore(std::move(parts)));
  });
}

Result<void> PersistentStore::read(ObjectContext& context) {
  return guarded([&] {
    PendingLinks links;
    for (RowStatements& rows : parts_->tables) {
      rows.readAll(links, [&](std::unique_ptr<ManagedObject> object, qint64 id) -> ManagedObject& {
        return context.adopt(std::move(object), id);
      });
    }
    for (const PendingLink& link : links) {
      context.linkRead(*link.owner, *link.property, link.target);
    }
  });
}

Result<void> PersistentStore::write(const ObjectContext& context) {
  if (auto there = parts_->file.isStillThere(); !there) return there;
  const auto rowsOf = [&](const EntityDescriptor& entity) -> RowStatements& {
    return *std::find_if(parts_->tables.begin(), parts_->tables.end(),
                         [&](const RowStatements& rows) { return &rows.entity() == &entity; });
  };
  return guarded([&] {
    SQLite::Transaction transaction(parts_->database, SQLite::TransactionBehavior::IMMEDIATE);
    for (const auto& row : context.deleted_) rowsOf(*row.entity).erase(row.id);
    for (ManagedObject* object : context.changed_) {
      if (object->dirty_) rowsOf(object->entity()).write(*object);
    }
    transaction.commit();
  });
}

}  // namespace pendra
