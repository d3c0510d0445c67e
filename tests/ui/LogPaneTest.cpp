#include "ui/LogPaneView.h"

#include <gmock/gmock.h>

#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "core/log/LogFixture.h"
#include "platform/Preferences.h"
#include "ui/Grid.h"
#include "ui/RowTableView.h"

namespace pendra {
namespace {

using testing::ElementsAre;

class LogPaneWidget : public TimeLog {
 protected:
  LogPaneWidget() {
    for (const char* name : {"Acme", "Bob"}) test.addEntry(activityOf(name), "2026-11-24T08:00:00Z", 3600);
    pane = std::make_unique<LogPaneView>(test.session, window);
    summary.reset(pane->makeSummary());
    pane->logController().rebuild();
    pane->resize(1000, 400);
    pane->show();
    std::ignore = QTest::qWaitForWindowExposed(pane.get());
  }
  template <class Control>
  Control& named(const char* accessibleName) {
    for (Control* control : pane->findChildren<Control*>()) {
      if (control->accessibleName() == QLatin1StringView(accessibleName)) return *control;
    }
    throw std::runtime_error(accessibleName);
  }
  [[nodiscard]] int rows() const { return pane->table().model()->rowCount(); }
  void typeInto(QLineEdit& field, const char* text) {
    field.setFocus();
    field.clear();
    QTest::keyClicks(&field, QLatin1StringView(text));
    QTest::keyClick(&field, Qt::Key_Return);
  }

  std::unique_ptr<LogPaneView> pane;
  std::unique_ptr<QWidget> summary;
};

TEST_F(LogPaneWidget, FiltersByWhatIsChosenAndTyped) {
  auto& customers = named<QComboBox>("Customer filter");
  ASSERT_EQ(customers.count(), 3);
  customers.setFocus();
  QTest::keyClick(&customers, Qt::Key_Down);
  EXPECT_EQ(rows(), 1);
  auto& from = named<QLineEdit>("From date");
  typeInto(from, "tomorrow");
  EXPECT_EQ(rows(), 0);
  QTest::mouseClick(pane->table().findChild<QPushButton*>(), Qt::LeftButton);
  EXPECT_EQ(rows(), 2);
  EXPECT_EQ(customers.currentText(), "All");
  EXPECT_EQ(from.text(), "");
  typeInto(named<QLineEdit>("To date"), "soonish");
  EXPECT_EQ(rows(), 2);
}

TEST_F(LogPaneWidget, SaysWhatADateMeansAndPicksOneFromACalendar) {
  auto& from = named<QLineEdit>("From date");
  auto& range = named<QComboBox>("Range");
  const auto* complaint = pane->findChild<QWidget*>("unreadableDate");
  EXPECT_EQ(range.currentText(), "Any Time");
  typeInto(from, "31 Feb");
  EXPECT_TRUE(complaint->isVisible());
  EXPECT_EQ(from.accessibleDescription(), "This date cannot be read and limits nothing.");
  EXPECT_EQ(rows(), 2);
  EXPECT_EQ(range.currentText(), "Dates");
  typeInto(from, "24.11.");
  EXPECT_FALSE(complaint->isVisible());
  EXPECT_EQ(from.accessibleDescription(), "Tuesday, 24 November 2026");
  EXPECT_EQ(rows(), 2);

  QTest::keyClick(&from, Qt::Key_Down, Qt::AltModifier);
  auto* calendar = from.findChild<QCalendarWidget*>();
  ASSERT_TRUE(calendar && calendar->isVisible());
  EXPECT_EQ(calendar->selectedDate(), QDate(2026, 11, 24));
  auto* days = calendar->findChild<QTableView*>();
  QTest::keyClick(days, Qt::Key_Escape);
  QTest::qWait(0);
  EXPECT_FALSE(from.findChild<QCalendarWidget*>());
  EXPECT_EQ(from.text(), "24.11.");
  QTest::keyClick(&from, Qt::Key_Down, Qt::AltModifier);
  days = from.findChild<QCalendarWidget*>()->findChild<QTableView*>();
  QTest::keyClick(days, Qt::Key_Right);
  QTest::keyClick(days, Qt::Key_Return);
  EXPECT_EQ(from.text(), "25 Nov 2026");
  EXPECT_EQ(rows(), 0);

  range.setFocus();
  QTest::keyClicks(&range, "today");
  EXPECT_EQ(from.text(), "today");
  EXPECT_EQ(rows(), 2);
  named<QAbstractButton>("Clear Filters").click();
  EXPECT_EQ(range.currentText(), "Any Time");
  EXPECT_FALSE(named<QAbstractButton>("Clear Filters").isVisible());
}

TEST_F(LogPaneWidget, FindsByTheLetterAndGivesTheKeyboardBack) {
  RowTableView& table = pane->table();
  auto& field = named<QLineEdit>("Find in the log");
  table.setFocus();
  pane->find();
  EXPECT_TRUE(field.hasFocus());
  QTest::keyClicks(&field, "acm");
  EXPECT_EQ(rows(), 1);
  EXPECT_EQ(summary->accessibleDescription(), "1 entry, 01:00:00, 1 is hidden by the search");
  EXPECT_FALSE(table.grab().isNull());  // with letters in bold
  QTest::keyClick(&field, Qt::Key_Down);
  EXPECT_TRUE(table.hasFocus());
  pane->find();
  EXPECT_EQ(field.selectedText(), "acm");
  QTest::keyClicks(&field, "zzz");
  EXPECT_EQ(rows(), 0);
  EXPECT_EQ(table.findChild<QLabel*>()->text(), "Nothing here contains “zzz”.");
  QTest::keyClick(&field, Qt::Key_Escape);
  EXPECT_EQ(rows(), 2);
  EXPECT_TRUE(field.hasFocus());
  QTest::keyClick(&field, Qt::Key_Escape);
  EXPECT_TRUE(table.hasFocus());
  QTest::keyClicks(&field, "bob");
  summary->findChild<QPushButton*>()->click();
  EXPECT_EQ(rows(), 2);
  EXPECT_EQ(field.text(), "");
}

TEST_F(LogPaneWidget, StandsOnTheGridWhateverIsShown) {
  RowTableView& table = pane->table();
  const auto content = [&](const char* identifier) {
    const int column = table.tableModel().columnOf(QString::fromLatin1(identifier)).value();
    return table.contentRect(table.visualRect(table.model()->index(0, column)), column);
  };
  for (const auto& [width, starts] : {std::pair(1120, grid::kWide), std::pair(1024, grid::kNarrow)}) {
    pane->resize(width, 400);
    const std::array<const char*, 6> columns{"state", nullptr, "customer", "job", "service", "notes"};
    for (std::size_t place = 0; place < columns.size(); ++place) {
      if (!columns[place]) continue;
      EXPECT_EQ(content(columns[place]).left(), starts[place]) << columns[place];
    }
    EXPECT_EQ(content("submitted").right(), width - 1 - 16);
  }
  table.resize(730, 300);
  EXPECT_NEAR(content("customer").width(), content("service").width(), 1) << "the widest give way together";
  QMenu menu;
  table.addColumnChoices(menu);
  QStringList titles;
  for (QAction* choice : menu.actions()) {
    titles << choice->text();
    choice->trigger();
  }
  EXPECT_EQ(titles, (QStringList{"Notes", "Start", "End"}));
  EXPECT_EQ(table.horizontalHeader()->length(), table.viewport()->width()) << "the service has the room now";
  EXPECT_EQ(table.model()->index(0, table.tableModel().columnOf(u"date").value()).data(),
            "Tue 24 Nov 2026, 09:00:00");
  pane->resize(500, 400);
  EXPECT_GE(content("customer").width(), 40);
  EXPECT_LT(content("service").right(), content("date").left());
}

TEST_F(LogPaneWidget, ItsTableStandsAsItWasArranged) {
  RowTable<LogRow>& rows = pane->logController().rows();
  const auto column = [&](const char* identifier) {
    return rows.columnOf(QString::fromLatin1(identifier)).value();
  };
  const auto open = [&](const std::optional<QString>& stored) {
    pane.reset();
    if (stored) test.defaults.setText(preferences::kLogColumns, *stored);
    rows.setHidden("end", false);
    pane = std::make_unique<LogPaneView>(test.session, window);
    pane->resize(1120, 400);
    pane->show();
    return pane->table().horizontalHeader();
  };
  QHeaderView* heads = open(std::nullopt);
  heads->resizeSection(column("job"), 150);
  heads->moveSection(heads->visualIndex(column("date")), 1);
  rows.setHidden("end", true);
  pane->table().setSortOrder({"customer", true});
  pane->hide();
  heads = open(std::nullopt);
  EXPECT_EQ(heads->sectionSize(column("job")), 150);
  EXPECT_EQ(heads->visualIndex(column("date")), 1);
  EXPECT_TRUE(heads->isSectionHidden(column("end")));
  EXPECT_EQ(pane->table().sortKey(), "customer");
  EXPECT_EQ(heads->length(), pane->table().viewport()->width());
  heads = open("widths job");
  EXPECT_EQ(heads->sectionSize(column("job")), 108) << "what cannot be read is forgotten";
  EXPECT_EQ(heads->visualIndex(column("date")), column("date"));
  EXPECT_EQ(pane->table().sortKey(), "date");
}

TEST_F(LogPaneWidget, HideSentIsThePreference) {
  test.session.context()->all<TimeEntry>()[0]->setDateSubmitted(test.clock.now());
  auto& hide = named<QCheckBox>("Hide sent");
  hide.click();
  EXPECT_EQ(rows(), 1);
  pane->logController().setHidesSubmitted(false);
  EXPECT_FALSE(hide.isChecked());
  EXPECT_EQ(rows(), 2);
}

TEST_F(LogPaneWidget, ASelectionIsSummedAndAnEditedEntryIsTheOnlyOne) {
  EXPECT_EQ(summary->accessibleDescription(), "2 entries, 02:00:00");
  pane->table().selectRows({0, 1});
  QSignalSpy edits(pane.get(), &LogPaneView::editTimeEntry);
  auto& table = pane->table();
  table.pressCell(table.model()->index(1, table.tableModel().columnOf(u"edit").value()));
  EXPECT_EQ(edits.size(), 1);
  EXPECT_THAT(table.selectedRows(), ElementsAre(1));
  EXPECT_EQ(window.currentEntry(), pane->logController().selectedEntry());
  EXPECT_EQ(summary->accessibleDescription(), "1 entry, 01:00:00");
}

TEST_F(LogPaneWidget, CanGoWhileItIsShown) {
  named<QLineEdit>("From date").setFocus();
  QTest::keyClicks(&named<QLineEdit>("From date"), "today");
  pane.reset();
  test.defaults.setBoolean(preferences::kHideSubmitted, true);  // nobody is left who listens
  EXPECT_TRUE(test.defaults.boolean(preferences::kHideSubmitted));
}

}  // namespace
}  // namespace pendra
