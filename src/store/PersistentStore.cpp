#include "store/PersistentStore.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include <QFileInfo>
#include <QTemporaryFile>
#include <cerrno>

#include "DocumentFile.h"
#include "RowStatements.h"
#include "platform/Files.h"
#include "store/ObjectContext.h"

namespace pendra {

namespace {

/// How long opening waits for another program that reads the file, in milliseconds.
constexpr int kBusyMilliseconds = 2000;

constexpr auto kUsualPermissions =
    QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther;

/// The system's own words where the system is the reason.
QString reasonOf(const SQLite::Exception& failure, sqlite3* connection) {
  switch (failure.getErrorCode()) {
    case SQLITE_FULL:
      return systemError(ENOSPC).text;
    case SQLITE_READONLY:
      return QStringLiteral("the file may not be written to");
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return QStringLiteral("the file is damaged");
    case SQLITE_BUSY:
      return QStringLiteral("another program is using the file");
    case SQLITE_IOERR:
    case SQLITE_CANTOPEN:
      if (const int code = connection ? sqlite3_system_errno(connection) : 0) return systemError(code).text;
      break;
    default:
      break;
  }
  return QString::fromUtf8(failure.what());
}

/// Runs what may throw the database's exception and hands its failure on as a value.
template <class Work>
auto guarded(const Work& work, sqlite3* connection = nullptr) -> Result<decltype(work())> {
  try {
    if constexpr (std::is_void_v<decltype(work())>) {
      work();
      return {};
    } else {
      return work();
    }
  } catch (const SQLite::Exception& failure) {
    return Error{QStringLiteral("SQLite"), failure.getExtendedErrorCode(), reasonOf(failure, connection)};
  }
}

void prepareConnection(SQLite::Database& database) {
  database.exec("PRAGMA journal_mode=DELETE");
  database.exec("PRAGMA synchronous=EXTRA");
  database.exec("PRAGMA temp_store=MEMORY");
}

void setLayout(SQLite::Database& database, int layout) {
  database.exec("PRAGMA user_version=" + std::to_string(layout));
}

void createTables(SQLite::Database& database, const ObjectModel& model) {
  SQLite::Transaction transaction(database);
  database.exec(model.schema.constData());
  database.exec("PRAGMA application_id=" + std::to_string(kApplicationID));
  setLayout(database, model.newestLayout());
  transaction.commit();
}

[[noreturn]] void throwDamaged() { throw SQLite::Exception("the file is damaged", SQLITE_CORRUPT); }

/// Reads every page. Being the first to read, it also takes back what a save that was killed has left.
void checkWhole(SQLite::Database& database) {
  SQLite::Statement check(database, "PRAGMA quick_check(1)");
  if (check.executeStep() && check.getColumn(0).getString() != "ok") throwDamaged();
}

int layoutOf(SQLite::Database& database) { return database.execAndGet("PRAGMA user_version").getInt(); }

void upgrade(SQLite::Database& database, const ObjectModel& model) {
  SQLite::Transaction transaction(database);
  for (int layout = layoutOf(database); layout < model.newestLayout(); ++layout) {
    database.exec(model.upgrades[static_cast<std::size_t>(layout - kFirstLayout)].constData());
  }
  setLayout(database, model.newestLayout());
  transaction.commit();
}

}  // namespace

struct PersistentStore::Parts {
  Parts(DocumentFile held, const ObjectModel& itsModel)
      : model(itsModel),
        file(std::move(held)),
        database(file.path().toUtf8().constData(), SQLite::OPEN_READWRITE, kBusyMilliseconds) {}

  Result<void> bringToNewestLayout();
  RowStatements& rowsOf(const EntityDescriptor& entity);

  const ObjectModel& model;
  DocumentFile file;
  SQLite::Database database;
  std::vector<RowStatements> tables;
};

Result<void> PersistentStore::Parts::bringToNewestLayout() {
  if (file.isEmpty()) return guarded([&] { createTables(database, model); }, database.getHandle());
  const int layout = layoutOf(database);
  if (layout >= model.newestLayout()) return {};
  auto kept = copyFile(file.path(), pathOfLayoutCopy(file.path(), layout), Existing::Keep);
  if (!kept) return kept;
  return guarded([&] { upgrade(database, model); }, database.getHandle());
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
  auto opened = guarded([&] {
    auto parts = std::make_unique<Parts>(std::move(held).value(), model);
    checkWhole(parts->database);
    prepareConnection(parts->database);
    return parts;
  });
  if (!opened) return opened.error();
  Parts& parts = *opened.value();
  if (auto newest = parts.bringToNewestLayout(); !newest) return newest.error();
  return guarded([&] {
    for (const EntityDescriptor* entity : model.entities) parts.tables.emplace_back(parts.database, *entity);
    return std::unique_ptr<PersistentStore>(new PersistentStore(std::move(opened).value()));
  });
}

Result<void> PersistentStore::check(const QString& path, const ObjectModel& model) {
  auto held = DocumentFile::hold(path);
  if (!held) return held.error();
  if (auto known = held.value().layout(model.newestLayout()); !known) return known.error();
  return guarded([&] {
    SQLite::Database database(path.toUtf8().constData(), SQLite::OPEN_READONLY);
    checkWhole(database);
  });
}

Result<void> PersistentStore::makeEmptyFile(const QString& path) {
  auto held = DocumentFile::hold(path);
  return held ? held.value().makeEmpty() : Result<void>(held.error());
}

QString pathOfLayoutCopy(const QString& document, int layout) {
  const QFileInfo file(document);
  return firstFreePath(
      file.path() + u'/' + file.completeBaseName() + u" (layout " + QString::number(layout) + u')',
      QStringLiteral("pdrbackup"));
}

Result<void> PersistentStore::read(ObjectContext& context) {
  return guarded([&] {
    PendingLinks links;
    for (RowStatements& rows : parts_->tables) {
      rows.readAll(links, [&](std::unique_ptr<ManagedObject> object, qint64 id) -> ManagedObject& {
        if (id <= context.table(object->entity()).lastID) throwDamaged();
        return context.adopt(std::move(object), id);
      });
    }
    for (const PendingLink& link : links) {
      context.linkRead(*link.owner, *link.property, link.target);
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
  return guarded(
      [&] {
        parts_->database.setBusyTimeout(patience);
        SQLite::Transaction transaction(parts_->database, SQLite::TransactionBehavior::IMMEDIATE);
        for (const auto& row : context.deleted_) parts_->rowsOf(*row.entity).erase(row.id);
        for (ManagedObject* object : context.changed_) {
          if (object->dirty_) parts_->rowsOf(object->entity()).write(*object);
        }
        transaction.commit();
      },
      parts_->database.getHandle());
}

Result<void> PersistentStore::writeAnew(const ObjectContext& context) {
  const QString path = parts_->file.path();
  QTemporaryFile draft(draftFor(path));
  if (!draft.open()) return Error{QStringLiteral("file"), draft.error(), draft.errorString()};
  draft.setPermissions(kUsualPermissions);
  auto made = open(draft.fileName(), parts_->model);
  if (!made) return made.error();
  auto written =
      guarded([&] { made.value()->writeAll(context); }, made.value()->parts_->database.getHandle());
  if (!written) return written;
  made.value().reset();
  if (auto named = moveToFreeName(draft.fileName(), path); !named) return named;
  auto opened = open(path, parts_->model);
  if (!opened) return opened.error();
  parts_ = std::move(opened.value()->parts_);
  return {};
}

void PersistentStore::writeAll(const ObjectContext& context) {
  SQLite::Transaction transaction(parts_->database, SQLite::TransactionBehavior::IMMEDIATE);
  for (const auto& table : context.tables_) {
    RowStatements& rows = parts_->rowsOf(*table.entity);
    for (ManagedObject* object : table.objects) {
      if (!object->isTemporary()) rows.write(*object);
    }
  }
  transaction.commit();
}

}  // namespace pendra
