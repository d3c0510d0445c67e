#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QTest>
#include <QTreeView>

#include "NoCommands.h"
#include "support/TestPlaces.h"
#include "support/TestSession.h"
#include "ui/ReportWindow.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

/// A month with three entries of two customers, one of them sent; opened on 24 November 2026 in Berlin.
class ReportOfAMonth : public testing::Test {
 protected:
  ReportOfAMonth() {
    test.openDocument(false);
    Customer& acme = test.addCustomer(u"Acme"_s);
    Activity& roof = test.addActivity(&acme, &test.addService(u"Design"_s), &test.addJob(acme, u"Roof"_s));
    test.addEntry(roof, "2026-11-24T07:30:00Z", 3600).setNotes(u"Sketches"_s);
    test.addEntry(roof, "2026-11-23T22:59:59Z", 7200).setDateSubmitted(test.clock.now());
    bolt = &test.addActivity(&test.addCustomer(u"Bolt"_s), nullptr);
    bolt->setBillable(false);
    test.addEntry(*bolt, "2026-11-23T23:00:00Z", 1800);
    test.session.requireEdits();
    window.emplace(WindowFrame{test.session, none}, [this](QDate first, QDate last, const auto& customer) {
      listed << first.toString(Qt::ISODate) << last.toString(Qt::ISODate) << customer.value_or(u"all"_s);
    });
    window->bringToFront();
    QCoreApplication::processEvents();
  }

  template <class Widget = QWidget>
  Widget& named(const QString& name) {
    for (auto* widget : window->findChildren<Widget*>()) {
      if (widget->accessibleName() == name) return *widget;
    }
    throw std::runtime_error(name.toStdString());
  }
  QString said(const QString& name) { return named(name).accessibleDescription(); }
  /// The bar of a day, as a screen reader has it.
  QAccessibleInterface& bar(int day) {
    return *QAccessible::queryAccessibleInterface(&named(u"Hours"_s))->child(day - 1);
  }
  /// The rows that are to be seen, each with its cells.
  QStringList rows(const QModelIndex& parent = {}) {
    auto& table = named<QTreeView>(u"Hours by group"_s);
    QStringList texts;
    for (int row = 0; row < table.model()->rowCount(parent); ++row) {
      QStringList cells;
      for (int column = 0; column < table.model()->columnCount(); ++column) {
        if (!table.isColumnHidden(column))
          cells << table.model()->index(row, column, parent).data(Qt::AccessibleTextRole).toString();
      }
      texts << cells.join(u' ');
      const QModelIndex index = table.model()->index(row, 0, parent);
      if (table.isExpanded(index)) texts += rows(index);
    }
    return texts;
  }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(&named(u"Hours"_s), key, modifiers);
  }

  TestSession test;
  NoCommands none;
  Activity* bolt = nullptr;
  QStringList listed;
  std::optional<ReportWindow> window;
};

TEST_F(ReportOfAMonth, SaysTheSameInBarsTableAndSums) {
  EXPECT_EQ(said(u"All hours"_s), "03:30:00");
  EXPECT_EQ(said(u"Sent"_s), "02:00:00");
  EXPECT_EQ(said(u"Not sent"_s), "01:30:00");
  EXPECT_EQ(said(u"Billable"_s), "03:00:00");
  EXPECT_EQ(bar(24).text(QAccessible::Name), "Tue 24 Nov 2026");
  EXPECT_EQ(bar(24).text(QAccessible::Description), "01:30:00, not sent, Acme 01:00:00, Bolt 00:30:00");
  EXPECT_EQ(bar(23).text(QAccessible::Description), "02:00:00, Acme 02:00:00");
  EXPECT_EQ(rows(),
            (QStringList{"Acme 2 03:00:00 02:00:00 01:00:00 03:00:00", "Bolt 1 - - 00:30:00 00:30:00"}));
  named<QTreeView>(u"Hours by group"_s).expandAll();
  const QStringList unfolded = rows();
  ASSERT_EQ(unfolded.size(), 9);
  EXPECT_EQ(unfolded[3], "Tue 24 Nov, 08:30:00 Sketches  01:00:00 - 01:00:00 01:00:00");
  EXPECT_EQ(unfolded[6], "No job 1 - - 00:30:00 00:30:00");
  EXPECT_EQ(said(u"All"_s), "Entries 3, Billable 03:00:00, Sent 02:00:00, Not sent 01:30:00, Total 03:30:00");

  // What is unfolded stays while time runs, and in the face of an edit.
  std::ignore = test.session.context()->edit(u"Start"_s, [&] { bolt->startEntry(); });
  EXPECT_EQ(rows().size(), 10);
  test.clock.advance(60);
  QTRY_COMPARE(said(u"Not sent"_s), u"01:31:00"_s);
  EXPECT_EQ(rows().size(), 10);
  EXPECT_EQ(bar(24).text(QAccessible::Description), "01:31:00, not sent, Acme 01:00:00, Bolt 00:31:00");

  std::ignore =
      test.session.context()->edit(u"Unlink"_s, [&] { test.session.settings()->setStandalone(true); });
  EXPECT_FALSE(named(u"Not sent"_s).isVisible());
  EXPECT_EQ(bar(24).text(QAccessible::Description), "01:31:00, Acme 01:00:00, Bolt 00:31:00");
}

TEST_F(ReportOfAMonth, IsWalkedByKeys) {
  named(u"Hours"_s).setFocus();
  press(Qt::Key_End);
  for (int day = 30; day > 24; --day) press(Qt::Key_Left);
  EXPECT_EQ(said(u"Read-out"_s), "Tue 24 Nov 2026 01:30:00, not sent, Acme 01:00:00, Bolt 00:30:00");
  press(Qt::Key_Return);
  EXPECT_EQ(listed, (QStringList{"2026-11-24", "2026-11-24", "all"}));
  press(Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(said(u"Range"_s), "October 2026");
  EXPECT_EQ(said(u"Hours"_s), "Nothing was timed in October 2026.");
  EXPECT_EQ(said(u"All hours"_s), "00:00:00");
  press(Qt::Key_Right, Qt::AltModifier);
  press(Qt::Key_Y, Qt::AltModifier);
  QTRY_COMPARE(bar(11).text(QAccessible::Name), u"November 2026"_s);  // a button's key waits for a moment
  QAccessibleActionInterface* presses = bar(11).actionInterface();
  presses->doAction(QAccessibleActionInterface::pressAction());
  QCoreApplication::processEvents();
  EXPECT_EQ(listed.mid(3), (QStringList{"2026-11-01", "2026-11-30", "all"}));

  test.session.close();
  EXPECT_EQ(rows(), QStringList());
  QTRY_VERIFY(!window->isVisible());
}

TEST_F(ReportOfAMonth, IsSavedAsItIsUnfolded) {
  std::ignore = test.session.context()->edit(
      u"Notes"_s, [&] { test.session.context()->all<TimeEntry>()[0]->setNotes(u"=1+1; \"x\""_s); });
  auto& table = named<QTreeView>(u"Hours by group"_s);
  table.expandRecursively(table.model()->index(0, 0));
  const QString csv = test.places.path("Report.csv");
  test.panels.willChoose(csv);
  named<QAbstractButton>(u"Save CSV…"_s).click();
  EXPECT_EQ(
      QString::fromUtf8(contentsOf(csv)),
      u"Customer,Job,Service,Start,Notes,Entries,Billable,Sent,Not sent,Total\r\n"
      "Acme,Roof,Design,2026-11-24 08:30:00,\"'=1+1; \"\"x\"\"\",1,01:00:00,00:00:00,01:00:00,01:00:00\r\n"
      "Acme,Roof,Design,2026-11-23 23:59:59,,1,02:00:00,02:00:00,00:00:00,02:00:00\r\n"
      "Bolt,,,,,1,00:00:00,00:00:00,00:30:00,00:30:00\r\n"_s);
  EXPECT_TRUE(contentsOf(csv).startsWith("\xEF\xBB\xBF")) << "the letters are told to be Unicode";
  const QString pdf = test.places.path("Report.pdf");
  test.panels.willChoose(pdf);
  EXPECT_TRUE(named<QAbstractButton>(u"Save PDF…"_s).text().contains(u'&')) << "it has a letter, as all have";
  named<QAbstractButton>(u"Save PDF…"_s).click();
  EXPECT_TRUE(contentsOf(pdf).startsWith("%PDF")) << "what its text says, a journey reads";
  EXPECT_EQ(test.panels.savePanels().back().proposedName, "Report November 2026.pdf");
}

}  // namespace
}  // namespace pendra
