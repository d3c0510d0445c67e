#pragma once
// The least that reading and writing a document takes: the database's own calls, with neither objects that
// know each other nor anything that watches them.

#include <QString>
#include <memory>
#include <string>
#include <vector>

namespace SQLite {
class Database;
}

namespace pendra::plain {

/// One row: its texts, and its numbers with the keys among them, in the order of the columns.
struct Row {
  std::vector<QString> texts;
  std::vector<double> numbers;
};

/// Every row of every table of a document.
[[nodiscard]] std::vector<Row> readAll(const QString& path);

/// A document in which one number of one row is written again and again.
class Writer {
 public:
  explicit Writer(const QString& path);
  ~Writer();
  /// One transaction, on the disk when it returns.
  void commitOne(double duration);

 private:
  std::unique_ptr<SQLite::Database> database_;
};

}  // namespace pendra::plain
