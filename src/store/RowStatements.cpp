#include "RowStatements.h"

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
      return bindText(statement, index, column.access.text(object));
    case Kind::Boolean:
      return bind(column.access.boolean(object), [](bool value) { return value ? 1 : 0; });
    case Kind::Instant:
      return bind(column.access.instant(object), [](Instant value) { return value.seconds; });
    case Kind::Number:
      return bind(column.access.number(object), [](double value) { return value; });
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

void clearAttribute(const PropertyDescriptor& column, ManagedObject& object) {
  switch (column.kind) {
    case Kind::Text:
      return column.access.text(object).reset();
    case Kind::Boolean:
      return column.access.boolean(object).reset();
    case Kind::Instant:
      return column.access.instant(object).reset();
    case Kind::Number:
      return column.access.number(object).reset();
    case Kind::ToOne:
    case Kind::ToMany:
      break;
  }
}

void readAttribute(const SQLite::Column& value, const PropertyDescriptor& column, ManagedObject& object) {
  switch (column.kind) {
    case Kind::Text:
      column.access.text(object) = QString::fromUtf8(value.getText(), value.getBytes());
      break;
    case Kind::Boolean:
      column.access.boolean(object) = value.getInt() != 0;
      break;
    case Kind::Instant:
      column.access.instant(object) = Instant{value.getDouble()};
      break;
    case Kind::Number:
      column.access.number(object) = value.getDouble();
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
      select_(database, selectText(entity)),
      upsert_(database, upsertText(entity)),
      delete_(database, "DELETE FROM \"" + std::string(entity.name) + "\" WHERE id=?") {}

void RowStatements::readAll(PendingLinks& links, const Adopt& adopt) {
  while (select_.executeStep()) {
    auto object = entity_->make();
    const std::size_t firstLink = links.size();
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      const SQLite::Column value = select_.getColumn(static_cast<int>(i) + 1);
      const PropertyDescriptor& column = *columns_[i];
      // What is NULL in the file is absent, whatever the class gives a new object.
      if (column.kind == Kind::ToOne) {
        if (!value.isNull()) links.push_back({nullptr, &column, value.getInt64()});
      } else if (value.isNull()) {
        clearAttribute(column, *object);
      } else {
        readAttribute(value, column, *object);
      }
    }
    ManagedObject& adopted = adopt(std::move(object), select_.getColumn(0).getInt64());
    for (std::size_t i = firstLink; i < links.size(); ++i) links[i].owner = &adopted;
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
