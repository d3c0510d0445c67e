#include "ui/NoticeLine.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

class Line : public testing::Test {
 protected:
  Line() {
    auto* column = new QVBoxLayout(&window);
    column->addWidget(&line);
    column->addWidget(&below, 1);
    window.resize(800, 300);
    window.show();
  }
  QPushButton* button(const QString& name) {
    for (auto* candidate : line.findChildren<QPushButton*>()) {
      if (candidate->accessibleName() == name && !candidate->isHidden()) return candidate;
    }
    return nullptr;
  }

  Notices notices;
  QWidget window;
  NoticeLine line{notices, NoticeLine::In::TimerWindow};
  QWidget below;
};

TEST_F(Line, StandsOnlyWhileThereIsSomethingToSay) {
  EXPECT_TRUE(line.isHidden());
  bool stoodWhileRunning = true;
  notices.post({u"save"_s,
                u"Not saved: No space left on device"_s,
                {{u"Try Again"_s, [&] { stoodWhileRunning = !notices.standing().empty(); }}}});
  EXPECT_FALSE(line.isHidden());
  EXPECT_EQ(line.accessibleDescription(), u"Not saved: No space left on device"_s);
  button(u"Try Again"_s)->click();
  EXPECT_FALSE(stoodWhileRunning);
  EXPECT_TRUE(line.isHidden());
}

TEST_F(Line, PushesDownWhatIsBelowWithAllItsWords) {
  notices.post({u"save"_s, u"Not saved "_s.repeated(12), {}});
  ASSERT_TRUE(QTest::qWaitFor([this] { return line.height() >= line.sizeHint().height(); }));
  EXPECT_GE(below.geometry().top(), line.geometry().bottom());
  window.resize(200, 300);
  const auto* words = line.findChild<QLabel*>();
  EXPECT_TRUE(QTest::qWaitFor(
      [words] { return words->width() < 200 && words->height() >= words->heightForWidth(words->width()); }));
}

TEST_F(Line, ShowsTheNewestAndComesBackToTheOlder) {
  notices.post({u"a"_s, u"first"_s, {}});
  notices.post({u"b"_s, u"second"_s, {}});
  EXPECT_EQ(line.text(), u"second"_s);
  button(u"1 more"_s)->click();
  EXPECT_EQ(line.text(), u"first"_s);
  button(u"1 more"_s)->click();
  EXPECT_EQ(line.text(), u"second"_s);
  button(u"Dismiss"_s)->click();
  EXPECT_EQ(line.text(), u"first"_s);
  button(u"Dismiss"_s)->click();
  EXPECT_TRUE(line.isHidden());
  notices.post({.key = u"time"_s, .text = u"How long?"_s, .actions = {}, .asks = true});
  notices.post({.key = u"c"_s, .text = u"reminder"_s, .actions = {}, .asks = true, .comesLast = true});
  EXPECT_EQ(line.text(), u"How long?"_s) << "what asks about time is not hidden by what reminds";
}

}  // namespace
}  // namespace pendra
