#include "ui/LogPaneView.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "core/log/LogFixture.h"
#include "platform/Preferences.h"
#include "ui/RowTableView.h"

namespace pendra {
namespace {

using testing::ElementsAre;

class LogPaneWidget : public TimeLog {
 protected:
  LogPaneWidget() {
    for (const char* name : {"Acme", "Bob"}) test.addPeriod(activityOf(name), "2026-11-24T08:00:00Z", 3600);
    pane = std::make_unique<LogPaneView>(test.session, window);
    summary.reset(pane->makeSummary());
    pane->logController().reloadData();
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
