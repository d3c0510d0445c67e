#include "RowStatements.h"

#include <unordered_map>

#include "Attributes.h"

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

/// What is NULL in the file is absent, whatever the class gives a new object.
PropertyValue valueIn(const SQLite::Column& value, Kind kind) {
  if (value.isNull()) return {};
  switch (kind) {
    case Kind::Text:
      return QString::fromUtf8(value.getText(), value.getBytes());
    case Kind::Boolean:
      return value.getInt() != 0;
    case Kind::Instant:
      return Instant{value.getDouble()};
    case Kind::Number:
      return value.getDouble();
    case Kind::ToOne:
      return qint64{value.getInt64()};
    case Kind::ToMany:
      break;
  }
  Q_UNREACHABLE();
}

/// Lets the objects of a table hold equal texts once, of which there are many.
class SharedTexts {
 public:
  void share(Slot<QString>& slot) {
    if (!slot.get()) return;
    if (known_.size() == kMost) known_.clear();
    slot = known_.emplace(*slot.get(), slot).first->second;
  }

 private:
  static constexpr std::size_t kMost = 10000;  // where so many differ, sharing saves little
  std::unordered_map<QString, Slot<QString>> known_;
};

}  // namespace

RowStatements::RowStatements(SQLite::Database& database, const EntityDescriptor& entity)
    : entity_(&entity),
      columns_(columnsOf(entity)),
      select_(database, selectText(entity)),
      upsert_(database, upsertText(entity)),
      delete_(database, "DELETE FROM \"" + std::string(entity.name) + "\" WHERE id=?") {}

void RowStatements::readAll(const Adopt& adopt, const Link& link) {
  SharedTexts texts;
  std::vector<std::pair<const PropertyDescriptor*, qint64>> links;
  while (select_.executeStep()) {
    auto object = entity_->make();
    links.clear();
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      const PropertyDescriptor& column = *columns_[i];
      const PropertyValue value = valueIn(select_.getColumn(static_cast<int>(i) + 1), column.kind);
      if (column.kind == Kind::ToOne) {
        if (const qint64* target = std::get_if<qint64>(&value)) links.emplace_back(&column, *target);
      } else {
        setAttribute(*object, column, value);
      }
      if (column.kind == Kind::Text) texts.share(column.access.text(*object));
    }
    ManagedObject& adopted = adopt(std::move(object), select_.getColumn(0).getInt64());
    for (const auto& [column, target] : links) link(adopted, *column, target);
  }
  select_.tryReset();
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
