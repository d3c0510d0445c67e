#include "ui_core/RowTable.h"

#include <gmock/gmock.h>

#include "support/CellText.h"
#include "ui_core/TableArrangement.h"
#include "ui_core/TableSelection.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

struct Entry {
  quint64 id;
  QString customer;
  std::optional<Instant> start;
  friend bool operator==(const Entry&, const Entry&) = default;
};

std::vector<Column<Entry>> columns() {
  return {{.head = {.identifier = u"customer"_s},
           .text = [](const Entry& entry) { return entry.customer; },
           .checked = [](const Entry& entry) { return entry.customer.isEmpty(); }},
          {.head = {.identifier = u"date"_s},
           .text = [](const Entry&) { return u"the same text"_s; },
           .time = [](const Entry& entry) { return entry.start; }}};
}

std::vector<quint64> ids(const RowTable<Entry>& table) {
  std::vector<quint64> result;
  for (const Entry& entry : table.rows()) result.push_back(entry.id);
  return result;
}

const std::vector<Entry> kEntries{
    {1, u"beta"_s, Instant{30}}, {2, u"Zed"_s, Instant{10}}, {3, u"Ärger"_s, Instant{20}},
    {4, u"Zed"_s, Instant{10}},  {5, u""_s, std::nullopt},
};

TEST(RowTable, OrdersRowsAndKeepsEqualOnesAsTheyCame) {
  const std::pair<SortOrder, std::vector<quint64>> rows[] = {
      {{}, {1, 2, 3, 4, 5}},
      {{u"customer"_s, true}, {5, 2, 4, 1, 3}},  // by code unit
      {{u"customer"_s, false}, {3, 1, 2, 4, 5}},
      {{u"date"_s, true}, {5, 2, 4, 3, 1}},  // by time, not by text
      {{u"date"_s, false}, {1, 3, 2, 4, 5}},
      {{u"nothing"_s, true}, {1, 2, 3, 4, 5}}};
  for (const auto& [order, sorted] : rows) {
    RowTable<Entry> table(columns());
    table.sortBy(order);
    table.sortBy({u""_s, true});  // no key keeps the order before
    table.setRows(kEntries);
    EXPECT_EQ(ids(table), sorted) << order.key.toStdString();
  }
}

TEST(RowTable, ItsArrangementIsALineThatIsTakenWholeOrNotAtAll) {
  auto heads = columns();
  heads[0].head.canHide = true;
  const RowTable<Entry> table(heads);
  const TableArrangement all{.sort = {u"date"_s, false},
                             .order = {u"date"_s, u"customer"_s},
                             .hidden = {u"customer"_s},
                             .widths = {{u"date"_s, 180}}};
  EXPECT_EQ(textOf(all), u"sort date down; order date customer; hidden customer; widths date 180"_s);
  EXPECT_EQ(readArrangement(textOf(all), table), all);
  EXPECT_EQ(readArrangement(textOf({}), table), TableArrangement());
  EXPECT_EQ(readArrangement(u"order date"_s, table)->order, (QStringList{u"customer"_s, u"date"_s}))
      << "a column that has come since";
  for (const QString& text :
       {u"sort date"_s, u"sort nothing up"_s, u"order date nobody"_s, u"order date date"_s, u"hidden date"_s,
        u"widths date"_s, u"widths date -1"_s, u"widths date 9999"_s, u"colour blue"_s, u"\u0001 ;;"_s}) {
    EXPECT_EQ(readArrangement(text, table), std::nullopt) << text.toStdString();
  }
}

TEST(RowTable, ReadsAsEmptyPastTheEnd) {
  RowTable<Entry> table(columns(), {.identity = [](const Entry& entry) { return entry.id; }});
  table.setRows(kEntries);
  for (const int row : {-1, 5, 1000}) {
    EXPECT_EQ(cellText(table, u"customer", row), u""_s) << row;
    EXPECT_EQ(table.identity(row), 0u) << row;
    EXPECT_FALSE(table.isChecked(row, 0)) << row;
    table.replaceRow(row, {9, u"lost"_s, {}});
  }
  EXPECT_EQ(cellText(table, u"unknown", 0), u""_s);
  EXPECT_EQ(table.text(0, 7), u""_s);
  EXPECT_EQ(ids(table), (std::vector<quint64>{1, 2, 3, 4, 5}));
}

/// What Qt's views are told, in its order.
class Told : public testing::Test {
 protected:
  Told() {
    const auto range = [this](const char* what) {
      return [this, what](const QModelIndex&, int first, int last) {
        told << u"%1 %2-%3"_s.arg(QLatin1StringView(what)).arg(first).arg(last);
      };
    };
    QObject::connect(&table, &QAbstractItemModel::rowsInserted, range("come"));
    QObject::connect(&table, &QAbstractItemModel::rowsRemoved, range("gone"));
    QObject::connect(&table, &QAbstractItemModel::layoutChanged, [this] { told << u"moved"_s; });
    QObject::connect(&table, &QAbstractItemModel::modelReset, [this] { told << u"reset"_s; });
    QObject::connect(&table, &QAbstractItemModel::dataChanged,
                     [this](const QModelIndex& first, const QModelIndex& last) {
                       told << u"other %1-%2"_s.arg(first.row()).arg(last.row());
                     });
    table.sortBy({u"customer"_s, true});
    table.setRows({{1, u"a"_s, {}}, {2, u"b"_s, {}}, {3, u"c"_s, {}}, {4, u"d"_s, {}}});
    selection.selectRows({1, 3});
    selection.setCurrentIndex(table.index(3, 1), QItemSelectionModel::NoUpdate);
    told.clear();
  }
  /// The selected objects, and the current one with its column.
  std::vector<quint64> selected() {
    std::vector<quint64> result;
    for (const int row : selection.rows()) result.push_back(table.identity(row));
    result.push_back(table.identity(selection.currentIndex().row()));
    result.push_back(static_cast<quint64>(selection.currentIndex().column()));
    return result;
  }

  /// Another customer for a row, or none: it goes.
  void review(const std::vector<std::pair<quint64, std::optional<QString>>>& others) {
    const auto find = [&](const Entry& entry) {
      return std::find_if(others.begin(), others.end(),
                          [&](const auto& other) { return other.first == entry.id; });
    };
    table.review(
        others.size(), [&](const Entry& entry) { return find(entry) != others.end(); },
        [&](Entry& entry, bool) {
          const auto customer = find(entry)->second;
          if (customer) entry.customer = *customer;
          return customer ? RowFate::Moves : RowFate::Goes;
        });
  }

  RowTable<Entry> table{columns(), {.identity = [](const Entry& entry) { return entry.id; }}};
  TableSelection selection{table};
  QStringList told;
  Notifier::Subscription selectionChanges = selection.changes.observe([this] { told << u"selection"_s; });
};

TEST_F(Told, IsTheDifferenceAndNothingElse) {
  table.updateRows({{1, u"a"_s, {}}, {2, u"b"_s, {}}, {3, u"c"_s, {}}, {4, u"d"_s, {}}});
  EXPECT_EQ(told, QStringList());
  table.updateRows({{1, u"a"_s, {}}, {2, u"b"_s, Instant{1}}, {3, u"c"_s, {}}, {4, u"d"_s, {}}});
  EXPECT_EQ(told, QStringList{u"other 1-1"_s});
  told.clear();
  table.updateRows(
      {{8, u"Z"_s, {}}, {9, u"bb"_s, {}}, {2, u"e"_s, Instant{1}}, {3, u"c"_s, {}}, {4, u"d"_s, {}}});
  EXPECT_EQ(told, QStringList({u"gone 0-0"_s, u"moved"_s, u"come 0-1"_s, u"other 4-4"_s}));
  EXPECT_THAT(ids(table), ElementsAre(8u, 9u, 3u, 4u, 2u));
  EXPECT_THAT(selected(), ElementsAre(4u, 2u, 4u, 1u));
  told.clear();
  table.sortBy({u"customer"_s, false});
  EXPECT_EQ(told, QStringList{u"moved"_s});
  EXPECT_THAT(selected(), ElementsAre(2u, 4u, 4u, 1u));
  told.clear();
  table.insertSorted({7, u"cc"_s, {}});
  review({{2, {}}, {9, {}}});
  EXPECT_EQ(told, QStringList({u"come 2-2"_s, u"gone 4-4"_s, u"selection"_s, u"gone 0-0"_s}));
  EXPECT_THAT(selected(), ElementsAre(4u, 4u, 1u));
}

TEST_F(Told, IsWhereARowStandsThatHasChangedAlsoBesideRowsThatAreHeldBack) {
  const std::pair<QString, std::vector<quint64>> places[] = {{u"0"_s, {2, 1, 3, 4}},  {u"a"_s, {2, 1, 3, 4}},
                                                             {u"cc"_s, {1, 3, 2, 4}}, {u"c"_s, {1, 3, 2, 4}},
                                                             {u"z"_s, {1, 3, 4, 2}},  {u"b"_s, {1, 2, 3, 4}}};
  for (const auto& [customer, order] : places) {
    review({{2, customer}});
    EXPECT_EQ(ids(table), order) << customer.toStdString();
    EXPECT_THAT(selected(), testing::UnorderedElementsAre(2u, 4u, 4u, 1u)) << customer.toStdString();
  }
  table.setFilter([](const Entry& entry) { return entry.id != 3; });
  review({{2, u"d"_s}, {3, u"a"_s}});  // equal ones stay as they stand
  EXPECT_EQ(ids(table), (std::vector<quint64>{1, 2, 4}));
  table.insertSorted({5, u"aa"_s, {}});
  told.clear();
  review({{1, {}}, {3, {}}, {5, {}}});
  EXPECT_EQ(told, QStringList{u"gone 0-1"_s});
  EXPECT_EQ(ids(table), (std::vector<quint64>{2, 4}));
  EXPECT_EQ(table.heldBack(), 0);
}

TEST_F(Told, IsOneResetWhenItIsMuchAfterWhichTheSelectionStandsWhereItStood) {
  std::vector<Entry> many;
  for (quint64 id = 0; id < 400; ++id) many.push_back({id + 10, QString::number(id), {}});
  many.push_back({4, u"2000"_s, {}});
  many.push_back({2, u"3000"_s, {}});
  table.updateRows(many);
  EXPECT_THAT(selected(), ElementsAre(4u, 2u, 4u, 1u));
  told.clear();
  const auto isOdd = [](const Entry& entry) { return entry.id % 2 == 1; };
  table.review(many.size(), isOdd, [](const Entry&, bool) { return RowFate::Goes; });
  EXPECT_EQ(told, QStringList{u"reset"_s});
  EXPECT_THAT(selected(), ElementsAre(4u, 2u, 4u, 1u));
  told.clear();
  table.setRows({{2, u"b"_s, {}}});
  EXPECT_TRUE(told.contains(u"selection"_s)) << "what is lost with its object is told";
  EXPECT_EQ(selection.rows(), std::vector<int>{0});
  selection.selectRow(0);
  EXPECT_EQ(told.back(), u"selection"_s) << "also when it is the same one again";
}

}  // namespace
}  // namespace pendra
