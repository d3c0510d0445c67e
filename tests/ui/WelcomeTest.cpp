#include <gtest/gtest.h>

#include <QPushButton>
#include <QRegularExpression>
#include <QTest>

#include "NoCommands.h"
#include "support/TestSession.h"
#include "ui/ShellWindows.h"

namespace pendra {
namespace {

/// Knows recent documents, and notes which one is opened.
class Recent final : public NoCommands {
 public:
  QStringList paths;
  QStringList opened;

 private:
  QStringList recentDocuments() const override { return paths; }
  void openRecent(const QString& path) override { opened << path; }
};

TEST(Welcome, BringsTheDocumentThatWasClosedBackWithReturn) {
  TestSession test;
  Recent recent;
  recent.paths = QStringList{"/a/R&D.pdr", "/a/Work.pdr", "/b/Work.pdr", "/4.pdr", "/5.pdr", "/6.pdr"};
  WelcomeWindow window({test.session, recent});
  QStringList titles;
  for (const auto* button : window.findChildren<QPushButton*>("recentDocument")) {
    titles << button->text().remove(QRegularExpression("(?<!&)&(?!&)"));  // the letter that chooses it
  }
  EXPECT_EQ(titles, QStringList({"Open “R&&D”", "Open “Work” in “/a”", "Open “Work” in “/b”", "Open “4”",
                                 "Open “5”"}));
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  QTest::keyClick(window.focusWidget(), Qt::Key_Return);
  EXPECT_EQ(recent.opened, QStringList("/a/R&D.pdr"));
  EXPECT_FALSE(window.isVisible());
}

}  // namespace
}  // namespace pendra
