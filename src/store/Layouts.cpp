#include "Layouts.h"

#include <set>

#include "Connection.h"
#include "store/PersistentStore.h"

namespace pendra::layouts {

namespace {

using Columns = std::set<std::string>;  // as "Table.column"

std::string quoted(const std::string& name) { return '"' + name + '"'; }

std::string nameOf(const std::string& table, const std::string& column) { return table + '.' + column; }

/// The columns of the model's tables in the file. What is no ordinary table has none.
Columns columnsOf(SQLite::Database& database, const ObjectModel& model) {
  Columns columns;
  SQLite::Statement info(database,
                         "SELECT column.name FROM sqlite_schema AS tables, pragma_table_info(?1) AS column "
                         "WHERE tables.name = ?1 AND tables.type = 'table' AND tables.rootpage > 0");
  for (const EntityDescriptor* entity : model.entities) {
    info.reset();
    info.bind(1, entity->name);
    while (info.executeStep()) columns.insert(nameOf(entity->name, info.getColumn(0).getString()));
  }
  return columns;
}

void checkThatModelFinds(const Columns& columns, const ObjectModel& model) {
  const auto require = [&](const std::string& name) {
    if (!columns.contains(name)) throw SQLite::Exception("the file is damaged: it lacks " + name, 1);
  };
  for (const EntityDescriptor* entity : model.entities) {
    require(nameOf(entity->name, "id"));
    for (const PropertyDescriptor& property : entity->properties) {
      if (property.hasColumn()) require(nameOf(entity->name, property.name));
    }
  }
}

void setNumber(SQLite::Database& database, int layout) {
  database.exec("PRAGMA user_version=" + std::to_string(layout));
}

std::vector<qint64> rowCounts(SQLite::Database& database, const ObjectModel& model) {
  std::vector<qint64> counts;
  for (const EntityDescriptor* entity : model.entities) {
    counts.push_back(database.execAndGet("SELECT count(*) FROM " + quoted(entity->name)).getInt64());
  }
  return counts;
}

void addColumns(SQLite::Database& database, const ObjectModel& model) {
  const Columns there = columnsOf(database, model);
  for (const auto& upgrade : model.upgrades) {
    for (const AddedColumn& column : upgrade) {
      if (there.contains(nameOf(column.table, column.name))) continue;
      database.exec("ALTER TABLE " + quoted(column.table) + " ADD COLUMN " + quoted(column.name) + ' ' +
                    column.type);
    }
  }
}

}  // namespace

void create(Connection& connection, const ObjectModel& model) {
  SQLite::Database& database = connection.database();
  SQLite::Transaction transaction(database);
  database.exec(model.schema.constData());
  database.exec("PRAGMA application_id=" + std::to_string(kApplicationID));
  setNumber(database, model.newestLayout());
  transaction.commit();
}

int numberOf(Connection& connection) {
  return connection.database().execAndGet("PRAGMA user_version").getInt();
}

void checkPages(Connection& connection) {
  connection.allowReadingAll();
  SQLite::Statement check(connection.database(), "PRAGMA quick_check(1)");
  if (check.executeStep() && check.getColumn(0).getString() != "ok") throwDamaged();
}

void checkColumns(Connection& connection, const ObjectModel& model) {
  Columns columns = columnsOf(connection.database(), model);
  if (numberOf(connection) < model.newestLayout()) {
    for (const auto& upgrade : model.upgrades) {
      for (const AddedColumn& column : upgrade) columns.insert(nameOf(column.table, column.name));
    }
  }
  checkThatModelFinds(columns, model);
}

void upgrade(Connection& connection, const ObjectModel& model) {
  connection.allowReadingAll();
  SQLite::Database& database = connection.database();
  SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
  checkColumns(connection, model);  // first, so that only tables are read
  const auto rows = rowCounts(database, model);
  addColumns(database, model);
  checkThatModelFinds(columnsOf(database, model), model);
  if (rowCounts(database, model) != rows) throwDamaged();
  checkPages(connection);
  setNumber(database, model.newestLayout());
  transaction.commit();
}

}  // namespace pendra::layouts
