#include "ui/RowTableView.h"
#include "ui/Theme.h"

#include "platform/DesktopLook.h"

#include <QCoreApplication>
#include <QWidget>

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QLabel>

namespace pendra {
namespace {

TEST(Theme, InksAreReadableOnWhatTheyAreDrawnOn) {
  const std::pair<QColor Colours::*, QColor Colours::*> pairs[] = {
      {&Colours::quiet, &Colours::window},       {&Colours::quiet, &Colours::selection},
      {&Colours::running, &Colours::runningRow}, {&Colours::running, &Colours::selection},
      {&Colours::link, &Colours::selection},     {&Colours::warning, &Colours::base}};
  for (const Colours* colours : {&Theme::light(), &Theme::dark()}) {
    for (const auto& [ink, paper] : pairs) {
      const QColor drawn = Theme::readable(colours->*ink, colours->*paper, colours->text);
      EXPECT_GE(Theme::contrast(drawn, colours->*paper), 4.5) << drawn.name().toStdString();
    }
  }
}

/// Drawn as they are, without `readable`, whatever the desktop wishes.
TEST(Theme, PlainInksAreReadable) {
  for (const Wishes& look :
       {Wishes{}, Wishes{.accent = 0xffee00}, Wishes{.accent = 0x101010},
        Wishes{.accent = 0xe01b24, .highContrast = true}, Wishes{.highContrast = true}}) {
    Theme::follow(look);
    for (const QRgb desktop : {0xefefef, 0x303030}) {
      const Colours& colours = Theme::colours(QPalette(QColor(desktop)));
      EXPECT_GE(Theme::contrast(colours.text, colours.selection), 4.5);
      EXPECT_GE(Theme::contrast(colours.quiet, colours.window), look.highContrast ? 7 : 4.5);
      EXPECT_GE(Theme::contrast(colours.notice, colours.noticeBack), 4.5);
      EXPECT_GE(Theme::contrast(colours.link, colours.window), 4.5);
      EXPECT_GE(Theme::contrast(colours.link, colours.selection), 4.5);
      EXPECT_GE(Theme::contrast(Qt::white, colours.filled.darker(110)), 4.5);
      EXPECT_GE(Theme::contrast(colours.frame, colours.window), 3) << "around a field";
      EXPECT_GE(Theme::contrast(colours.line, colours.base), look.highContrast ? 2.5 : 1);
    }
  }
  Theme::follow({});
}

TEST(Theme, FollowsTheDesktopUnlessForced) {
  const QPalette darkDesktop(QColor(0x303030));
  Theme::force(Appearance::System);
  EXPECT_EQ(Theme::palette(darkDesktop).color(QPalette::Window), Theme::dark().window);
  EXPECT_EQ(Theme::palette(QPalette(QColor(0xefefef))).color(QPalette::Window), Theme::light().window);
  Theme::follow({.isDark = false, .lessMotion = true});
  EXPECT_EQ(Theme::palette(darkDesktop).color(QPalette::Window), Theme::light().window)
      << "the desktop says so";
  EXPECT_EQ(Theme::motion(120), 0);
  Theme::follow({.isDark = true});
  Theme::force(Appearance::Light);
  EXPECT_EQ(Theme::palette(darkDesktop).color(QPalette::Window), Theme::light().window);
  Theme::follow({});
}

TEST(Theme, ReachesOpenWindowsWithColoursAndSizes) {
  QWidget window;
  QLabel plain(&window);
  QLabel large(&window);
  large.setFont(Theme::timeFont());
  RowTableView table(&window);
  window.show();
  const auto sizes = [&] {
    return std::vector{plain.font().pointSizeF(), large.font().pointSizeF(), table.font().pointSizeF()};
  };
  const auto usual = sizes();
  Theme::force(Appearance::Dark);
  Theme::follow({.textScale = 2});
  Theme::follow({.textScale = 2});
  QCoreApplication::processEvents();
  EXPECT_EQ(window.palette().color(QPalette::Window), Theme::dark().window);
  for (std::size_t one = 0; one < usual.size(); ++one) EXPECT_NEAR(sizes()[one], 2 * usual[one], 0.01) << one;
  EXPECT_GE(table.verticalHeader()->defaultSectionSize(), table.fontMetrics().height() + 4);
  Theme::force(Appearance::Light);
  Theme::follow({});
  QCoreApplication::processEvents();
  EXPECT_EQ(window.palette().color(QPalette::Window), Theme::light().window);
  EXPECT_EQ(sizes(), usual) << "and back again";
}

}  // namespace
}  // namespace pendra
