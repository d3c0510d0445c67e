#include "CompanyFile.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace pendra {
namespace {

std::optional<QString> textOrNone(const QJsonValue& value) {
  return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

ArchiveValue::Array rowsOf(const QJsonValue& list) {
  ArchiveValue::Array rows;
  const QJsonArray items = list.toArray();
  rows.reserve(items.size());
  for (const auto& item : items) {
    const QJsonObject row = item.toObject();
    rows.push_back(ListRow{.name = textOrNone(row[QStringLiteral("name")]),
                           .id = textOrNone(row[QStringLiteral("id")]),
                           .parent = textOrNone(row[QStringLiteral("parent")])});
  }
  return rows;
}

ArchiveValue::Array textsOf(const QJsonValue& list) {
  ArchiveValue::Array texts;
  for (const auto& item : list.toArray()) texts.push_back(item.toString());
  return texts;
}

}  // namespace

Result<CompanyFile> CompanyFile::read(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return Error{QStringLiteral("POSIX"), 0, file.errorString()};
  QJsonParseError error;
  const QJsonObject company = QJsonDocument::fromJson(file.readAll(), &error).object();
  if (error.error != QJsonParseError::NoError) return Error{QStringLiteral("JSON"), 0, error.errorString()};
  const auto open = textOrNone(company[QStringLiteral("companyFileName")]);
  return CompanyFile{.companyFileName = open ? ArchiveValue(*open) : ArchiveValue(),
                     .employees = textsOf(company[QStringLiteral("employees")]),
                     .services = rowsOf(company[QStringLiteral("services")]),
                     .customers = rowsOf(company[QStringLiteral("customers")]),
                     .jobs = rowsOf(company[QStringLiteral("jobs")]),
                     .accepts = company[QStringLiteral("accepts")].toBool(true)};
}

}  // namespace pendra
