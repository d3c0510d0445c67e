#include "ui_core/ShellCommands.h"

#include <gtest/gtest.h>

#include "support/ScriptedWorkspace.h"

namespace pendra {
namespace {

TEST(ShellCommands, HelpOpensAtItsAnchor) {
  ScriptedWorkspace workspace;
  for (const char* anchor : {"time-log", ""})
    showHelp(QString::fromLatin1(anchor), workspace, QStringLiteral("/opt/my pendra/share"));
  const QString book =
      "file:///opt/my%20pendra/share/Pendra.help/Contents/Resources/English.lproj/PendraHelp1_0.htm";
  EXPECT_EQ(workspace.opened(), QStringList({book + "#time-log", book}));
}

}  // namespace
}  // namespace pendra
