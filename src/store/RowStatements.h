#pragma once

#include <SQLiteCpp/SQLiteCpp.h>

#include <functional>
#include <memory>
#include <vector>

#include "store/ManagedObject.h"

namespace pendra {

/// The rows of one entity's table: how they are read, written and erased. Throws SQLite::Exception.
class RowStatements {
 public:
  RowStatements(SQLite::Database& database, const EntityDescriptor& entity);

  [[nodiscard]] const EntityDescriptor& entity() const { return *entity_; }

  /// A to-one relationship and its other end.
  struct ToOne {
    const PropertyDescriptor* property;
    const PropertyDescriptor* inverse;
  };
  using Adopt = std::function<ManagedObject&(OwnedObject, qint64 id)>;
  using Link = std::function<void(ManagedObject& owner, const ToOne& ends, qint64 target)>;
  /// Makes an object of each row, in ascending order, and hands it to `adopt`, then what its to-one columns
  /// hold to `link`.
  void readAll(const Adopt& adopt, const Link& link);
  void write(ManagedObject& object);
  void erase(qint64 id);

 private:
  const EntityDescriptor* entity_;
  std::vector<const PropertyDescriptor*> columns_;
  sqlite3* database_;
  SQLite::Statement upsert_;
  SQLite::Statement delete_;
};

}  // namespace pendra
