#include "ui/SendTimeSheet.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "ui/RowTableView.h"

namespace pendra {
namespace {

QWidget& openSheet() {
  QWidget* sheet = QApplication::activeModalWidget();
  if (!sheet) throw std::runtime_error("no sheet is open");
  return *sheet;
}

/// The buttons of that title that can be seen; one of them can be pressed at least.
std::vector<QPushButton*> buttons(const char* title) {
  std::vector<QPushButton*> found;
  for (auto* button : openSheet().findChildren<QPushButton*>())
    if (button->text().remove(u'&') == title && button->isVisible()) found.push_back(button);
  return found;
}

void press(const char* title) { buttons(title).at(0)->click(); }

const Summary kPart{
    .lines = {{.customer = "Acme", .days = "Tue 24 Nov", .notes = "Plan"}, {.customer = "Sum"}},
    .leftOut = "1 of 2 unsent entries; 1 is not selected.",
    .canShowAll = true,
    .remark = "1 timer was stopped for this."};
const Summary kAll{.lines = {{.customer = "Acme"}, {.customer = "Zed"}, {.customer = "Sum"}}};

class SendTime : public testing::Test {
 protected:
  SendTime() { window.show(); }
  /// Runs the sheet and does things while it is open.
  bool run(const Summary& summary, const std::function<void()>& deeds) {
    QTimer::singleShot(0, deeds);
    return sheet.run(summary, [] { return kAll; });
  }
  [[nodiscard]] static QString label(const char* name) {
    const auto* found = openSheet().findChild<QLabel*>(name);
    return found->isVisible() ? found->text() : QString();
  }
  [[nodiscard]] static int rows() {
    return openSheet().findChild<RowTableView*>()->tableModel().rowCount({});
  }

  ModalDepth modals;
  QWidget window;
  SendTimeSheet sheet{modals, &window};
};

TEST_F(SendTime, SaysWhatIsLeftOutAndTakesItInAndStaysWithoutButtonsWhileItIsSent) {
  EXPECT_TRUE(run(kPart, [&] {
    EXPECT_TRUE(modals.isModal());
    EXPECT_EQ(label("leftOut"), kPart.leftOut);
    EXPECT_EQ(label("remark"), kPart.remark);
    EXPECT_EQ(rows(), 2);
    press("Show All");
    EXPECT_EQ(rows(), 3);
    EXPECT_EQ(label("leftOut"), QString());
    press("Send");
  }));
  EXPECT_FALSE(modals.isModal());
  for (const auto* button : openSheet().findChildren<QPushButton*>()) EXPECT_FALSE(button->isEnabled());
  sheet.close();
  EXPECT_FALSE(QApplication::activeModalWidget());
}

TEST_F(SendTime, CannotSendNothingAndSaysWhyItIsNothing) {
  EXPECT_FALSE(run({.leftOut = "The only unsent entry is hidden by the filter.", .canShowAll = true}, [] {
    EXPECT_FALSE(buttons("Send").at(0)->isEnabled());
    EXPECT_EQ(label("leftOut"), QString()) << "it stands in the middle";
    press("Show All");
    EXPECT_TRUE(buttons("Send").at(0)->isEnabled());
    press("Cancel");
  }));
  EXPECT_FALSE(run({.leftOut = "Everything here has been sent."}, [] {
    EXPECT_TRUE(buttons("Show All").empty());
    QTest::keyClick(&openSheet(), Qt::Key_Escape);
  }));
  EXPECT_FALSE(QApplication::activeModalWidget());
}

}  // namespace
}  // namespace pendra
