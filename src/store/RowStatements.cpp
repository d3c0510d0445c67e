#include "RowStatements.h"

#include <sqlite3.h>

#include <string_view>
#include <unordered_map>

#include "store/RelationshipKeeper.h"

namespace pendra {

namespace {

std::vector<const PropertyDescriptor*> columnsOf(const EntityDescriptor& entity) {
  std::vector<const PropertyDescriptor*> columns;
  for (const PropertyDescriptor& property : entity.properties) {
    if (property.hasColumn()) columns.push_back(&property);
  }
  return columns;
}

/// One piece of text for each column, joined by commas and preceded by one for the key.
template <class Piece>
std::string listed(const std::vector<const PropertyDescriptor*>& columns, const std::string& key,
                   const Piece& piece) {
  std::string list = key;
  for (const PropertyDescriptor* column : columns)
    list += ", " + piece('"' + std::string(column->name) + '"');
  return list;
}

/// Where the n-th column stands in a row: behind the key.
int columnOf(std::size_t index) { return static_cast<int>(index) + 1; }

const auto kName = [](const std::string& name) { return name; };

std::string selectText(const EntityDescriptor& entity) {
  return "SELECT " + listed(columnsOf(entity), "id", kName) + " FROM \"" + entity.name + "\" ORDER BY id";
}

std::string upsertText(const EntityDescriptor& entity) {
  const auto columns = columnsOf(entity);
  const auto place = [](const std::string&) { return std::string("?"); };
  const auto update = [](const std::string& name) { return name + "=excluded." + name; };
  return "INSERT INTO \"" + std::string(entity.name) + "\" (" + listed(columns, "id", kName) + ") VALUES (" +
         listed(columns, "?", place) + ") ON CONFLICT(id) DO UPDATE SET " +
         listed(columns, "id=excluded.id", update);
}

void bindText(SQLite::Statement& statement, int index, const std::optional<QString>& text) {
  if (!text) return statement.bind(index);
  const QByteArray bytes = text->toUtf8();
  statement.bind(index, std::string(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

void bindColumn(SQLite::Statement& statement, int index, const PropertyDescriptor& column,
                ManagedObject& object) {
  const auto bind = [&](const auto& value, const auto& stored) {
    value ? statement.bind(index, stored(*value)) : statement.bind(index);
  };
  switch (column.kind) {
    case Kind::Text:
      return bindText(statement, index, column.access.text(object).get());
    case Kind::Boolean:
      return bind(column.access.boolean(object).get(), [](bool value) { return value ? 1 : 0; });
    case Kind::Instant:
      return bind(column.access.instant(object).get(), [](Instant value) { return value.seconds; });
    case Kind::Number:
      return bind(column.access.number(object).get(), [](double value) { return value; });
    case Kind::ToOne: {
      const ManagedObject* target = column.access.toOne(object).target();
      return target && !target->isTemporary() ? statement.bind(index, int64_t{target->objectID()})
                                              : statement.bind(index);
    }
    case Kind::ToMany:
      break;
  }
  Q_UNREACHABLE();
}

/// Walks through the rows of a table. A document has millions of cells: what each costs here is felt at every
/// start.
class Rows {
 public:
  Rows(sqlite3* database, const std::string& select) : database_(database) {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v2(database, select.c_str(), -1, &statement, nullptr);
    statement_.reset(statement);
    if (code != SQLITE_OK) throw SQLite::Exception(database_, code);
  }
  [[nodiscard]] bool next() {
    const int code = sqlite3_step(statement_.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE) throw SQLite::Exception(database_, code);
    return code == SQLITE_ROW;
  }
  /// None where NULL stands.
  [[nodiscard]] std::optional<qint64> integer(int column) const {
    sqlite3_value* value = valueOf(column);
    return value ? std::optional<qint64>(sqlite3_value_int64(value)) : std::nullopt;
  }
  [[nodiscard]] std::optional<double> number(int column) const {
    sqlite3_value* value = valueOf(column);
    return value ? std::optional(sqlite3_value_double(value)) : std::nullopt;
  }
  /// In UTF-8, until the next row.
  [[nodiscard]] std::optional<std::string_view> text(int column) const {
    sqlite3_value* value = valueOf(column);
    if (!value) return std::nullopt;
    const auto* letters = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return std::string_view(letters ? letters : "", static_cast<std::size_t>(sqlite3_value_bytes(value)));
  }

 private:
  /// One look at the row for what it holds and of what type; none where NULL stands.
  [[nodiscard]] sqlite3_value* valueOf(int column) const {
    sqlite3_value* value = sqlite3_column_value(statement_.get(), column);
    return sqlite3_value_type(value) == SQLITE_NULL ? nullptr : value;
  }

  sqlite3* database_;
  std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement_{nullptr, &sqlite3_finalize};
};

/// Lets the objects of a table hold equal texts once, of which there are many.
class SharedTexts {
 public:
  void read(Slot<QString>& slot, std::optional<std::string_view> letters) {
    if (!letters) return slot.set(std::nullopt);
    if (const auto known = known_.find(*letters); known != known_.end()) {
      slot = known->second;
      return;
    }
    slot.set(QString::fromUtf8(letters->data(), static_cast<qsizetype>(letters->size())));
    if (known_.size() == kMost) known_.clear();
    known_.emplace(*letters, slot);
  }

 private:
  /// Looks letters up where they stand in the row.
  struct Hash : std::hash<std::string_view> {
    using is_transparent = void;
  };
  static constexpr std::size_t kMost = 10000;  // where so many differ, sharing saves little
  std::unordered_map<std::string, Slot<QString>, Hash, std::equal_to<>> known_;
};

/// What is NULL in the file is absent, whatever the class gives a new object.
void readAttribute(ManagedObject& object, const PropertyDescriptor& property, const Rows& rows, int column,
                   SharedTexts& texts) {
  switch (property.kind) {
    case Kind::Text:
      texts.read(property.access.text(object), rows.text(column));
      break;
    case Kind::Boolean: {
      const auto value = rows.integer(column);
      property.access.boolean(object).set(value ? std::optional(*value != 0) : std::nullopt);
      break;
    }
    case Kind::Instant: {
      const auto seconds = rows.number(column);
      property.access.instant(object).set(seconds ? std::optional(Instant{*seconds}) : std::nullopt);
      break;
    }
    case Kind::Number:
      property.access.number(object).set(rows.number(column));
      break;
    case Kind::ToOne:
    case Kind::ToMany:
      break;
  }
}

}  // namespace

RowStatements::RowStatements(SQLite::Database& database, const EntityDescriptor& entity)
    : entity_(&entity),
      columns_(columnsOf(entity)),
      database_(database.getHandle()),
      upsert_(database, upsertText(entity)),
      delete_(database, "DELETE FROM \"" + std::string(entity.name) + "\" WHERE id=?") {}

void RowStatements::readAll(const Adopt& adopt, const Link& link) {
  SharedTexts texts;
  std::vector<std::pair<int, ToOne>> relationships;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (columns_[i]->kind != Kind::ToOne) continue;
    relationships.push_back({columnOf(i), {columns_[i], &RelationshipKeeper::inverseOf(*columns_[i])}});
  }
  Rows rows(database_, selectText(*entity_));
  while (rows.next()) {
    auto object = entity_->make();
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      readAttribute(*object, *columns_[i], rows, columnOf(i), texts);
    }
    ManagedObject& adopted = adopt(std::move(object), rows.integer(0).value_or(0));
    for (const auto& [column, ends] : relationships) {
      if (const auto target = rows.integer(column)) link(adopted, ends, *target);
    }
  }
}

void RowStatements::write(ManagedObject& object) {
  upsert_.tryReset();  // not reset(), which throws the failure of the last run once more
  upsert_.bind(1, int64_t{object.objectID()});
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    bindColumn(upsert_, static_cast<int>(i) + 2, *columns_[i], object);
  }
  upsert_.exec();
}

void RowStatements::erase(qint64 id) {
  delete_.tryReset();
  delete_.bind(1, int64_t{id});
  delete_.exec();
}

}  // namespace pendra
