#include "ui/SendTimeSheet.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace pendra {
namespace {

QWidget& openSheet() {
  QWidget* sheet = QApplication::activeModalWidget();
  if (!sheet) throw std::runtime_error("no sheet is open");
  return *sheet;
}

void press(const char* title) {
  for (auto* button : openSheet().findChildren<QPushButton*>()) {
    if (button->text() == title) button->click();
  }
}

TEST(SendTime, StaysWithoutItsButtonsUntilItIsClosed) {
  ModalDepth modals;
  QWidget window;
  window.show();
  SendTimeSheet summary(modals, &window);
  QTimer::singleShot(0, [&] {
    EXPECT_TRUE(modals.isModal());
    press("Send");
  });
  EXPECT_EQ(summary.run({}), 1);
  EXPECT_FALSE(modals.isModal());
  for (const auto* button : openSheet().findChildren<QPushButton*>()) EXPECT_FALSE(button->isEnabled());

  summary.close();
  EXPECT_FALSE(QApplication::activeModalWidget());
}

TEST(SendTime, EndsWithCancelAndEscape) {
  ModalDepth modals;
  QWidget window;
  window.show();
  SendTimeSheet summary(modals, &window);
  QTimer::singleShot(0, [] { press("Cancel"); });
  EXPECT_EQ(summary.run({}), 0);
  QTimer::singleShot(0, [] { QTest::keyClick(&openSheet(), Qt::Key_Escape); });
  EXPECT_EQ(summary.run({}), 0);
  EXPECT_FALSE(QApplication::activeModalWidget());
}

}  // namespace
}  // namespace pendra
