#include <gtest/gtest.h>

#include <QLineEdit>

#include "Desk.h"
#include "store/UndoStack.h"
#include "ui_core/UndoHistory.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

class QuickEntryAtTheDesk : public testing::Test {
 protected:
  void sitDown(bool standalone) {
    desk_.emplace(standalone);
    Service& design = desk().addService(u"Design"_s);
    Customer& acme = desk().addCustomer(u"Acme"_s);
    desk().addActivity(&acme, &design);
    desk().addEntry(desk().addActivity(&acme, &design, &desk().addJob(acme, u"Roof"_s), u"sketches"_s),
                    "2026-11-24T07:00:00Z", 3600);
    desk().addCustomer(u"Fernwood Clinic"_s);
    desk().addCustomer(u"Fernhill"_s);
    desk().sitDown();
    desk().command(Command::QuickEntry);
  }

  Desk& desk() { return *desk_; }
  QString reading() {
    return desk().sees(u"Quick entry reading"_s) ? desk().text(u"Quick entry reading"_s) : QString();
  }
  QString field() { return desk().text(u"Quick entry"_s); }

 private:
  std::optional<Desk> desk_;
};

TEST_F(QuickEntryAtTheDesk, SaysWhatReturnWillDoAndDoesIt) {
  sitDown(true);
  EXPECT_EQ(desk().focus(), u"Quick entry"_s);
  EXPECT_EQ(reading(), QString());
  desk().type(u"acme, roof @8:30-9:30"_s);
  const QString said =
      u"Books 01:00:00, today from 8:30 to 9:30\nAcme - Roof - Design, “sketches”\n"
      "Overlaps Acme - Roof - Design by 00:30:00"_s;
  EXPECT_EQ(reading(), said);
  EXPECT_EQ(desk().description(u"Quick entry"_s), said);
  EXPECT_EQ(desk().description(u"Quick entry reading"_s), said);
  EXPECT_EQ(desk().focus(), u"Quick entry"_s) << "what lies below takes no keyboard";
  desk().press(Qt::Key_Return);
  EXPECT_EQ(field(), QString());
  EXPECT_EQ(reading(), QString());
  EXPECT_EQ(desk().rows(u"Time log"_s), 2);
  EXPECT_EQ(desk().cell(u"Time log"_s, 0, u"Duration"_s), u"01:00:00"_s);
  EXPECT_EQ(desk().selectedRow(u"Activities"_s), 1);
  EXPECT_EQ(desk().selectedRow(u"Time log"_s), 0);
  desk().onDisk([](const ObjectContext& file) { EXPECT_EQ(file.all<TimeEntry>().size(), 2U); });

  UndoHistory history(desk().session);
  desk().type(u"zed: dancing -10"_s);
  EXPECT_EQ(reading(),
            u"Starts as of 9:50, 00:10:00 ago\nNew activity: zed - dancing\nNew customer “zed”\n"
            "New service item “dancing”"_s);
  desk().wait(60);
  desk().press(Qt::Key_Return);
  EXPECT_EQ(desk().text(u"Elapsed time"_s), u"00:10:00"_s) << "ten minutes before Return";
  EXPECT_EQ(desk().notices().last(), u"“zed” and “dancing” are new in their lists."_s);
  ObjectContext& context = *desk().session.context();
  EXPECT_EQ(context.undoStack().undoName(), u"Start of zed - dancing"_s);
  history.undo();
  EXPECT_EQ(context.all<Customer>().size(), 3U);
  EXPECT_EQ(desk().rows(u"Time log"_s), 2);

  desk().type(u"acme: design @9-10 3 days ago"_s);
  desk().press(Qt::Key_Return);
  EXPECT_TRUE(desk().notices().contains(u"01:00:00 are booked for “Acme - Design” on Sat 21 Nov 2026."_s));
}

TEST_F(QuickEntryAtTheDesk, DoesNothingOfWhatItDoesNotUnderstand) {
  sitDown(false);
  desk().type(u"acme: dancing @9"_s);
  EXPECT_EQ(reading(), u"No service item is called “dancing”."_s);
  desk().press(Qt::Key_Return);
  EXPECT_EQ(desk().rows(u"Time log"_s), 1);
  EXPECT_EQ(desk().named<QLineEdit>(u"Quick entry"_s).selectedText(), u"dancing"_s);
  desk().press(Qt::Key_Escape);
  EXPECT_EQ(reading(), QString());
  EXPECT_EQ(field(), u"acme: dancing @9"_s);
  desk().press(Qt::Key_Return);
  EXPECT_NE(reading(), QString()) << "what is not seen is not done";
  desk().press(Qt::Key_Escape);
  desk().press(Qt::Key_Escape);
  EXPECT_EQ(field(), QString());
}

TEST_F(QuickEntryAtTheDesk, TakesWhatIsChosenAndKeepsTheTimes) {
  sitDown(true);
  desk().type(u"fern @9"_s);
  EXPECT_EQ(reading(), u"“fern” fits 2 customers: Fernhill, Fernwood Clinic."_s);
  desk().press(Qt::Key_Down);
  desk().press(Qt::Key_Down);
  EXPECT_EQ(desk().description(u"Quick entry"_s), u"Fernwood Clinic"_s);
  desk().press(Qt::Key_Return);
  EXPECT_EQ(field(), u"Fernwood Clinic @9"_s);
  desk().type(u": des"_s);
  EXPECT_EQ(field(), u"Fernwood Clinic: des @9"_s);
  desk().press(Qt::Key_Tab);
  EXPECT_EQ(field(), u"Fernwood Clinic: Design @9"_s);
  EXPECT_EQ(desk().rows(u"Time log"_s), 1);
  desk().press(Qt::Key_Tab);
  EXPECT_NE(desk().focus(), u"Quick entry"_s) << "a second Tab goes on";
  EXPECT_EQ(reading(), QString());

  desk().typeInto(u"Quick entry"_s, u"ske"_s);
  desk().press(Qt::Key_Tab);
  EXPECT_EQ(field(), u"Acme, Roof: Design - sketches"_s);
  desk().front().resize(desk().front().minimumWidth(), 300);
  Desk::settle();
  const QWidget& label = desk().named(u"Quick entry reading"_s);
  EXPECT_TRUE(desk().front().rect().contains(QRect(label.mapTo(&desk().front(), QPoint()), label.size())));
}

}  // namespace
}  // namespace pendra
