#include "PlainDocument.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

namespace pendra::plain {

namespace {

constexpr const char* kTables[] = {"Customer", "Job",        "Service", "Activity",
                                   "Identity", "TimePeriod", "Document"};

Row rowOf(SQLite::Statement& select) {
  Row row;
  for (int column = 0; column < select.getColumnCount(); ++column) {
    const SQLite::Column value = select.getColumn(column);
    if (value.isText()) {
      row.texts.push_back(QString::fromUtf8(value.getText(), value.getBytes()));
    } else if (!value.isNull()) {
      row.numbers.push_back(value.getDouble());
    }
  }
  return row;
}

}  // namespace

std::vector<Row> readAll(const QString& path) {
  const SQLite::Database database(path.toStdString(), SQLite::OPEN_READONLY);
  std::vector<Row> rows;
  for (const char* table : kTables) {
    SQLite::Statement select(database, std::string("SELECT * FROM ") + table + " ORDER BY id");
    while (select.executeStep()) rows.push_back(rowOf(select));
  }
  return rows;
}

Writer::Writer(const QString& path)
    : database_(std::make_unique<SQLite::Database>(path.toStdString(), SQLite::OPEN_READWRITE)) {
  database_->exec("PRAGMA journal_mode=DELETE");
  database_->exec("PRAGMA synchronous=EXTRA");
}

Writer::~Writer() = default;

void Writer::commitOne(double duration) {
  SQLite::Transaction transaction(*database_, SQLite::TransactionBehavior::IMMEDIATE);
  SQLite::Statement update(*database_, "UPDATE TimePeriod SET duration=? WHERE id=1");
  update.bind(1, duration);
  update.exec();
  transaction.commit();
}

}  // namespace pendra::plain
