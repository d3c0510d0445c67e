#include "ui_core/RowTable.h"

#include <gmock/gmock.h>

#include "support/CellText.h"
#include "support/Rows.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

struct Entry {
  quint64 id;
  QString customer;
  std::optional<Instant> start;
};

std::vector<Column<Entry>> columns(int* formatted = nullptr) {
  return {{.head = {.identifier = u"customer"_s},
           .text =
               [formatted](const Entry& entry) {
                 if (formatted) ++*formatted;
                 return entry.customer;
               },
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

struct SortCase {
  const char* name;
  SortOrder descriptor;
  std::vector<quint64> order;
};

class Sorting : public testing::TestWithParam<SortCase> {};

TEST_P(Sorting, OrdersRowsAndKeepsEqualOnesAsTheyCame) {
  RowTable<Entry> table(columns());
  table.sortBy(GetParam().descriptor);
  table.setRows(kEntries);
  EXPECT_EQ(ids(table), GetParam().order);
}

INSTANTIATE_TEST_SUITE_P(RowTable, Sorting,
                         testing::Values(SortCase{"NoKey", {}, {1, 2, 3, 4, 5}},
                                         SortCase{"TextByCodeUnit", {u"customer"_s, true}, {5, 2, 4, 1, 3}},
                                         SortCase{"TextDescending", {u"customer"_s, false}, {3, 1, 2, 4, 5}},
                                         SortCase{"DateByTimeNotText", {u"date"_s, true}, {5, 2, 4, 3, 1}},
                                         SortCase{"DateDescending", {u"date"_s, false}, {1, 3, 2, 4, 5}},
                                         SortCase{"UnknownKey", {u"nothing"_s, true}, {1, 2, 3, 4, 5}}),
                         RowName());

TEST(RowTable, ADescriptorWithoutAKeyKeepsTheOrderBefore) {
  RowTable<Entry> table(columns());
  table.sortBy({u"customer"_s, false});
  table.sortBy({u""_s, true});
  table.setRows(kEntries);
  EXPECT_EQ(ids(table), (std::vector<quint64>{3, 1, 2, 4, 5}));
  EXPECT_EQ(table.sortOrder(), (SortOrder{u"customer"_s, false}));
}

TEST(RowTable, FormatsEachTextOnceInASort) {
  int formatted = 0;
  RowTable<Entry> table(columns(&formatted));
  table.sortBy({u"customer"_s, true});
  table.setRows(kEntries);
  EXPECT_EQ(formatted, 5);
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

TEST(RowTable, InsertsWhereAskedWithoutSorting) {
  RowTable<Entry> table(columns());
  table.sortBy({u"customer"_s, true});
  table.setRows({kEntries[0], kEntries[1]});
  table.insertRow(0, {8, u"zz"_s, {}});
  table.insertRow(99, {9, u"aa"_s, {}});
  EXPECT_THAT(ids(table), ElementsAre(8u, 2u, 1u, 9u));
}

}  // namespace
}  // namespace pendra
