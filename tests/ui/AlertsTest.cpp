#include <gtest/gtest.h>

#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "support/Rows.h"
#include "support/TestPlaces.h"
#include "ui/QtAlerts.h"
#include "ui/QtPanels.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

QMessageBox& openBox() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (auto* box = qobject_cast<QMessageBox*>(window); box && box->isVisible()) return *box;
  }
  throw std::runtime_error("no alert is open");
}

QPushButton& buttonOf(QMessageBox& box, const QString& title) {
  for (auto* button : box.findChildren<QPushButton*>()) {
    if (button->accessibleName() == title) return *button;
  }
  throw std::runtime_error("no such button");
}

struct AnswerCase {
  const char* name;
  QStringList buttons;
  std::function<void(QMessageBox&)> answer;
  int expected;
};

void pressEscape(QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); }
void closeBox(QMessageBox& box) { box.close(); }

class Answers : public testing::TestWithParam<AnswerCase> {};

TEST_P(Answers, AreTheSameForAlertsAndSheets) {
  ModalDepth modals;
  QtAlerts alerts(modals);
  const Alert alert{.message = u"<b>Plain</b>"_s, .informative = {}, .buttons = GetParam().buttons};
  bool counted = false;
  QTimer::singleShot(0, [&] {
    counted = modals.isModal();
    GetParam().answer(openBox());
  });
  EXPECT_EQ(alerts.runAlert(alert), GetParam().expected);
  EXPECT_TRUE(counted);
  EXPECT_FALSE(modals.isModal());

  int answered = 0;
  QWidget window;
  window.show();
  alerts.beginSheet(alert, [&](int answer) { answered = answer; });
  EXPECT_FALSE(modals.isModal());
  GetParam().answer(openBox());
  EXPECT_EQ(answered, GetParam().expected);
}

const QStringList kThree{u"It Arrived"_s, u"Send Again"_s, u"Cancel"_s};

INSTANTIATE_TEST_SUITE_P(
    Alerts, Answers,
    testing::Values(
        AnswerCase{"First", kThree, [](QMessageBox& box) { buttonOf(box, u"It Arrived"_s).click(); }, 1000},
        AnswerCase{"Second", kThree, [](QMessageBox& box) { buttonOf(box, u"Send Again"_s).click(); }, 1001},
        AnswerCase{"Return", kThree, [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); }, 1000},
        AnswerCase{"EscapeIsCancel", kThree, pressEscape, 1002},
        AnswerCase{"WhatIsTypedOnAnswersNothing", kThree,
                   [](QMessageBox& box) {
                     QTest::keyClicks(box.defaultButton(), u"is it so"_s);
                     QTest::keyClick(box.defaultButton(), Qt::Key_Return);
                     pressEscape(box);
                   },
                   1002},
        AnswerCase{"CloseBoxIsCancel", kThree, closeBox, 1002},
        AnswerCase{"EscapeIsTheOnlyButton", {u"OK"_s}, pressEscape, 1000}),
    RowName());

TEST(Alerts, ReturnDoesNotAnswerWhatMustBeLookedUp) {
  ModalDepth modals;
  QtAlerts alerts(modals);
  QTimer::singleShot(0, [] { QTest::keyClick(&openBox(), Qt::Key_Return); });
  EXPECT_EQ(alerts.runAlert(
                {.message = u"Arrived?"_s, .informative = {}, .buttons = kThree, .returnCancels = true}),
            kSecondButton + 1);
}

TEST(Alerts, TheAffirmativeButtonStandsLast) {
  ModalDepth modals;
  QtAlerts alerts(modals);
  QWidget window;
  window.show();
  alerts.beginSheet({.message = u"?"_s, .informative = {}, .buttons = kThree}, {});
  QMessageBox& box = openBox();
  EXPECT_LT(buttonOf(box, u"Cancel"_s).x(), buttonOf(box, u"Send Again"_s).x());
  EXPECT_LT(buttonOf(box, u"Send Again"_s).x(), buttonOf(box, u"It Arrived"_s).x());
}

TEST(Panels, NamesFitAFile) {
  EXPECT_EQ(fileNameFor(u"Time Log 11/24/2026.txt"_s), u"Time Log 11-24-2026.txt"_s);
  EXPECT_EQ(withRequiredType(u"/a/Dr. Who"_s, u"pdr"_s), u"/a/Dr. Who.pdr"_s);
  EXPECT_EQ(withRequiredType(u"/a/b.PDR"_s, u"pdr"_s), u"/a/b.PDR"_s);
  EXPECT_EQ(withRequiredType(u"/a/b"_s, {}), u"/a/b"_s);
}

QFileDialog& openPanel(QtPanels& panels, std::optional<QString>& chosen) {
  panels.beginSavePanel({.title = {}, .proposedName = u"a"_s, .folder = {}, .requiredType = {}},
                        [&chosen](const std::optional<QString>& path) { chosen = path; });
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (auto* panel = qobject_cast<QFileDialog*>(window); panel && panel->isVisible()) return *panel;
  }
  throw std::runtime_error("no panel is open");
}

TEST(Panels, OpenInTheFolderThatWasChosenLastAlsoInALaterRun) {
  const TestPlaces places;
  UserDefaults defaults(places.defaultsFile());
  ModalDepth modals;
  std::optional<QString> chosen;
  QtPanels panels(modals, defaults, places.documents);
  QFileDialog& first = openPanel(panels, chosen);
  EXPECT_EQ(first.directory().path(), places.documents);
  first.setDirectory(places.caches);
  static_cast<QDialog&>(first).accept();
  EXPECT_EQ(chosen, places.caches + u"/a");

  QtPanels later(modals, defaults, places.documents);
  QFileDialog& second = openPanel(later, chosen);
  EXPECT_EQ(second.directory().path(), places.caches);
  second.reject();
  QDir(places.caches).removeRecursively();
  QFileDialog& third = openPanel(later, chosen);
  EXPECT_EQ(third.directory().path(), places.documents) << "a folder that is gone is forgotten";
  third.reject();
}

}  // namespace
}  // namespace pendra
