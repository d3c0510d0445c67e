#include "PlainLog.h"

#include <QFile>
#include <algorithm>

#include "model/DurationText.h"
#include "model/Queries.h"
#include "platform/DateTexts.h"

namespace pendra::plain {

namespace {

Row rowOf(const Activity& activity, const TimeEntry& entry) {
  return {queries::nameOf(activity.customer()),
          queries::nameOf(activity.job()),
          queries::nameOf(activity.service()),
          entry.start()->seconds,
          entry.storedDuration(),
          entry.sentSeconds()};
}

template <class Key, class KeyOf>
void sortByKey(std::vector<Row>& rows, const KeyOf& keyOf) {
  std::vector<std::pair<Key, std::size_t>> keys;
  keys.reserve(rows.size());
  for (const Row& row : rows) keys.emplace_back(keyOf(row), keys.size());
  std::stable_sort(keys.begin(), keys.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<Row> sorted;
  sorted.reserve(rows.size());
  for (const auto& key : keys) sorted.push_back(std::move(rows[key.second]));
  rows = std::move(sorted);
}

}  // namespace

std::vector<Row> rowsOf(const ObjectContext& context) {
  std::vector<Row> rows;
  for (const Activity* activity : context.all<Activity>()) {
    for (const TimeEntry* entry : activity->entries()) rows.push_back(rowOf(*activity, *entry));
  }
  return rows;
}

std::vector<Row> rowsOf(const ObjectContext& context, const QString& customer, Instant from, Instant to) {
  std::vector<Row> rows;
  for (const Activity* activity : context.all<Activity>()) {
    if (queries::nameOf(activity->customer()) != customer) continue;
    for (const TimeEntry* entry : activity->entries()) {
      if (*entry->start() >= from && *entry->start() < to) rows.push_back(rowOf(*activity, *entry));
    }
  }
  return rows;
}

std::vector<const TimeEntry*> found(const ObjectContext& context, const QString& word) {
  std::vector<const TimeEntry*> entries;
  const auto has = [&word](const QString& text) { return text.contains(word, Qt::CaseInsensitive); };
  for (const Activity* activity : context.all<Activity>()) {
    for (const TimeEntry* entry : activity->entries()) {
      if (has(queries::nameOf(activity->customer())) || has(queries::nameOf(activity->job())) ||
          has(queries::nameOf(activity->service())) || has(entry->notes().value_or(QString()))) {
        entries.push_back(entry);
      }
    }
  }
  return entries;
}

void sortBy(std::vector<Row>& rows, const QString& column, const Calendar& calendar) {
  if (column == u"date") return sortByKey<double>(rows, [](const Row& row) { return row.start; });
  if (column == u"customer") return sortByKey<QString>(rows, [](const Row& row) { return row.customer; });
  if (column == u"job") return sortByKey<QString>(rows, [](const Row& row) { return row.job; });
  if (column == u"service") return sortByKey<QString>(rows, [](const Row& row) { return row.service; });
  if (column == u"duration") {
    return sortByKey<QString>(rows, [](const Row& row) { return durationText(row.duration); });
  }
  sortByKey<QString>(rows, [&](const Row& row) {
    return row.submitted < 1 ? QStringLiteral("-") : shortDate({row.submitted}, calendar);
  });
}

QByteArray exported(const ObjectContext& context) {
  QByteArray bytes;
  const QString employee = queries::firstIdentity(context)->employeeName().value_or(QString());
  for (const Activity* activity : context.all<Activity>()) {
    for (const TimeEntry* entry : activity->entries()) {
      const QStringList fields{universalDateTime(*entry->start()),
                               queries::nameOf(activity->customer()),
                               queries::nameOf(activity->job()),
                               queries::nameOf(activity->service()),
                               durationText(entry->storedDuration()),
                               entry->wasSent() ? universalDateTime(*entry->dateSubmitted()) : QString(),
                               activity->notes().value_or(QString()),
                               entry->notes().value_or(QString()),
                               employee};
      bytes += '"' + fields.join(u"\"\t\"").toUtf8() + "\"\n";
    }
  }
  return bytes;
}

void write(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) file.write(bytes);
}

}  // namespace pendra::plain
