#include "ui/MenuBar.h"

#include <gtest/gtest.h>

#include <QMenu>

#include "NoCommands.h"
#include "ui_core/Menus.h"

namespace pendra {
namespace {

TEST(MenuBar, GivesEveryItemALetterThatChoosesItAlone) {
  MenuModel model;
  NoCommands commands;
  QWidget window;
  const MenuBar bar(model, commands, &window);
  for (const QAction* menu : bar.actions()) {
    QStringList letters;
    for (const QAction* item : menu->menu()->actions()) {
      if (item->isSeparator()) continue;
      const auto letter = item->text().indexOf(u'&');
      ASSERT_GE(letter, 0) << item->text().toStdString();
      letters << item->text().sliced(letter + 1, 1).toLower();
    }
    EXPECT_EQ(letters.removeDuplicates(), 0) << menu->text().toStdString();
  }
}

}  // namespace
}  // namespace pendra
