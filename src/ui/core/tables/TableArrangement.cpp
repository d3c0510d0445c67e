#include "ui_core/TableArrangement.h"

#include <algorithm>

namespace pendra {

namespace {

constexpr int kNarrowest = 16;
constexpr int kWidest = 4000;
const QString kUp = QStringLiteral("up");
const QString kDown = QStringLiteral("down");

bool readSort(const QStringList& words, const TableModel& table, TableArrangement& into) {
  if (words.size() != 2 || (words[1] != kUp && words[1] != kDown)) return false;
  const auto column = table.columnOf(words[0]);
  into.sort = {.key = words[0], .ascending = words[1] == kUp};
  return column && table.head(*column).sortable;
}

/// Every column once: one that the table has got since then keeps its own place, after the one before it.
bool readOrder(const QStringList& words, const TableModel& table, TableArrangement& into) {
  into.order = words;
  for (int column = 0; column < table.columnCount(); ++column) {
    const QString& its = table.head(column).identifier;
    if (into.order.contains(its)) continue;
    const qsizetype before = column > 0 ? into.order.indexOf(table.head(column - 1).identifier) : -1;
    into.order.insert(before + 1, its);
  }
  return into.order.size() == table.columnCount();
}

bool readHidden(const QStringList& words, const TableModel& table, TableArrangement& into) {
  into.hidden = words;
  return std::all_of(words.begin(), words.end(), [&](const QString& word) {
    const auto column = table.columnOf(word);
    return column && table.head(*column).canHide;
  });
}

bool readWidths(const QStringList& words, const TableModel& table, TableArrangement& into) {
  for (qsizetype word = 0; word + 1 < words.size(); word += 2) {
    const int width = words[word + 1].toInt();
    if (!table.columnOf(words[word]) || width < kNarrowest || width > kWidest) return false;
    into.widths[words[word]] = width;
  }
  return words.size() % 2 == 0;
}

bool readPart(QStringList words, const TableModel& table, TableArrangement& into) {
  const QString kind = words.takeFirst();
  if (kind == u"sort") return readSort(words, table, into);
  if (kind == u"order") return readOrder(words, table, into);
  if (kind == u"hidden") return readHidden(words, table, into);
  return kind == u"widths" && readWidths(words, table, into);
}

}  // namespace

QString textOf(const TableArrangement& arrangement) {
  QStringList parts;
  const auto add = [&parts](const QString& kind, const QStringList& words) {
    if (!words.isEmpty()) parts << kind + u' ' + words.join(u' ');
  };
  const SortOrder& sort = arrangement.sort;
  add(QStringLiteral("sort"),
      sort.key.isEmpty() ? QStringList() : QStringList{sort.key, sort.ascending ? kUp : kDown});
  add(QStringLiteral("order"), arrangement.order);
  add(QStringLiteral("hidden"), arrangement.hidden);
  QStringList widths;
  for (auto width = arrangement.widths.cbegin(); width != arrangement.widths.cend(); ++width) {
    widths << width.key() << QString::number(width.value());
  }
  add(QStringLiteral("widths"), widths);
  return parts.join(u"; ");
}

std::optional<TableArrangement> readArrangement(const QString& text, const TableModel& table) {
  TableArrangement arrangement;
  for (const QString& part : text.split(QStringLiteral("; "), Qt::SkipEmptyParts)) {
    const QStringList words = part.split(u' ', Qt::SkipEmptyParts);
    if (words.isEmpty() || !readPart(words, table, arrangement)) return std::nullopt;
  }
  return arrangement;
}

}  // namespace pendra
