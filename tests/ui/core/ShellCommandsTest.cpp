#include "ui_core/ShellCommands.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "platform/Identifiers.h"
#include "platform/Version.h"
#include "support/ScriptedWorkspace.h"

namespace pendra {
namespace {

class BrokenWorkspace final : public Workspace {
 public:
  [[nodiscard]] bool isRunning(const QString&) const override { return false; }
  bool openUrl(const QString&) override { throw std::runtime_error("no browser"); }
  void reveal(const QString&) override {}
  [[nodiscard]] Subscription observeLaunches(std::function<void(const QString&)>) override { return {}; }
};

TEST(ShellCommands, HelpThatFailsDisturbsNobody) {
  BrokenWorkspace workspace;
  EXPECT_NO_THROW(showHelp({}, workspace, "/share"));
}

TEST(ShellCommands, OpenTheirAddresses) {
  ScriptedWorkspace workspace;
  showHelp(QStringLiteral("time-log"), workspace, QStringLiteral("/opt/my pendra/share"));
  submitFeedback(workspace);
  showCommunity(workspace);
  showComponents(workspace, "/share/pendra");
  EXPECT_EQ(workspace.opened(),
            QStringList({QStringLiteral("file:///opt/my%20pendra/share/Pendra.help/Contents/Resources/"
                                        "English.lproj/PendraHelp1_0.htm#time-log"),
                         identifiers::kFeedbackForm, identifiers::kCommunity,
                         "file:///share/pendra/Third%20Party%20Components.pdf"}));
  EXPECT_TRUE(identifiers::kFeedbackForm.endsWith(u"?a=GenNewRecord"));
}

TEST(ShellCommands, TheAboutBoxNamesTheBuildAndStatisticsTheVersion) {
  EXPECT_EQ(versionText(), QString(u"Version " + bundleVersion()));
  EXPECT_NE(bundleVersion(), shortVersion());
}

}  // namespace
}  // namespace pendra
