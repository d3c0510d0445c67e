#include "CompanyFile.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include "channel/PDToVTProtocol.h"

namespace pendra {
namespace {

ArchiveValue textOrNil(const QJsonValue& value) {
  return value.isString() ? ArchiveValue(value.toString()) : ArchiveValue();
}

ArchiveValue::Array rowsOf(const QJsonValue& list) {
  ArchiveValue::Array rows;
  const QJsonArray items = list.toArray();
  rows.reserve(items.size());
  for (const auto& item : items) {
    const QJsonObject row = item.toObject();
    rows.push_back(
        ArchiveRecord{&kNameAndRecNumberClass,
                      {textOrNil(row[QStringLiteral("name")]), textOrNil(row[QStringLiteral("id")]),
                       textOrNil(row[QStringLiteral("parent")])}});
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
  return CompanyFile{.companyFileName = textOrNil(company[QStringLiteral("companyFileName")]),
                     .employees = textsOf(company[QStringLiteral("employees")]),
                     .services = rowsOf(company[QStringLiteral("services")]),
                     .customers = rowsOf(company[QStringLiteral("customers")]),
                     .jobs = rowsOf(company[QStringLiteral("jobs")]),
                     .accepts = company[QStringLiteral("accepts")].toBool(true)};
}

}  // namespace pendra
