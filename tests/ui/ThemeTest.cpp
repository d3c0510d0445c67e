#include "ui/Theme.h"

#include <QCoreApplication>
#include <QWidget>

#include "support/Rows.h"

namespace pendra {
namespace {

struct Pair {
  const char* name;
  QColor Colours::*ink;
  QColor Colours::*paper;
};

class Readable : public testing::TestWithParam<Pair> {};

TEST_P(Readable, InBothLooks) {
  for (const Colours* colours : {&Theme::light(), &Theme::dark()}) {
    const QColor& paper = colours->*GetParam().paper;
    const QColor ink = Theme::readable(colours->*GetParam().ink, paper, colours->text);
    EXPECT_GE(Theme::contrast(ink, paper), 4.5) << ink.name().toStdString();
  }
}

INSTANTIATE_TEST_SUITE_P(Theme, Readable,
                         testing::Values(Pair{"QuietOnWindow", &Colours::quiet, &Colours::window},
                                         Pair{"QuietOnSelection", &Colours::quiet, &Colours::selection},
                                         Pair{"RunningOnItsRow", &Colours::running, &Colours::runningRow},
                                         Pair{"RunningOnSelection", &Colours::running, &Colours::selection},
                                         Pair{"LinkOnSelection", &Colours::link, &Colours::selection},
                                         Pair{"Warning", &Colours::warning, &Colours::base}),
                         RowName());

/// Drawn as they are, without `readable`.
TEST(Theme, PlainInksAreReadable) {
  for (const Colours* colours : {&Theme::light(), &Theme::dark()}) {
    EXPECT_GE(Theme::contrast(colours->quiet, colours->window), 4.5);
    EXPECT_GE(Theme::contrast(colours->notice, colours->noticeBack), 4.5);
    EXPECT_GE(Theme::contrast(colours->link, colours->window), 4.5);
    EXPECT_GE(Theme::contrast(Qt::white, colours->filled.darker(110)), 4.5);
    EXPECT_GE(Theme::contrast(colours->frame, colours->window), 3) << "around a field";
  }
}

TEST(Theme, FollowsTheDesktopUnlessForced) {
  const QPalette darkDesktop(QColor(0x303030));
  Theme::force(Appearance::System);
  EXPECT_EQ(Theme::palette(darkDesktop).color(QPalette::Window), Theme::dark().window);
  EXPECT_EQ(Theme::palette(QPalette(QColor(0xefefef))).color(QPalette::Window), Theme::light().window);
  Theme::force(Appearance::Light);
  EXPECT_EQ(Theme::palette(darkDesktop).color(QPalette::Window), Theme::light().window);
}

TEST(Theme, ReachesOpenWindows) {
  QWidget window;
  window.show();
  Theme::force(Appearance::Dark);
  QCoreApplication::processEvents();
  EXPECT_EQ(window.palette().color(QPalette::Window), Theme::dark().window);
  Theme::force(Appearance::Light);
  QCoreApplication::processEvents();
  EXPECT_EQ(window.palette().color(QPalette::Window), Theme::light().window);
}

}  // namespace
}  // namespace pendra
