#include "ui_core/ShellCommands.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "platform/Identifiers.h"
#include "platform/Version.h"
#include "support/Rows.h"
#include "support/ScriptedWorkspace.h"

namespace pendra {
namespace {

struct Sender {
  const char* name;
  HelpSender sender;
  const char* ending;
};

class HelpAddress : public testing::TestWithParam<Sender> {};

TEST_P(HelpAddress, EndsWithWhatTheSenderStandsFor) {
  ScriptedWorkspace workspace;
  showHelp(GetParam().sender, workspace, "/opt/my pendra/share");
  EXPECT_EQ(
      workspace.opened(),
      QStringList(QString("file:///opt/my%20pendra/share/Pendra.help/Contents/Resources/English.lproj/") +
                  GetParam().ending));
}

INSTANTIATE_TEST_SUITE_P(
    Table, HelpAddress,
    testing::Values(
        Sender{"Text", {.text = "time-log", .tag = 10, .intValue = 0}, "PendraHelp1_0.htm#time-log"},
        Sender{"EmptyText", {.text = "", .tag = 10, .intValue = 0}, "PendraHelp1_0.htm"},
        Sender{"Tag", {.text = {}, .tag = 43, .intValue = 7}, "PendraHelp1_0.htm#43"},
        Sender{"Value", {.text = {}, .tag = 0, .intValue = -7}, "PendraHelp1_0.htm#-7"},
        Sender{"Nothing", {}, "PendraHelp1_0.htm"}),
    RowName());

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
  submitFeedback(workspace);
  showCommunity(workspace);
  showComponents(workspace, "/share/pendra");
  EXPECT_EQ(workspace.opened(), QStringList({identifiers::kFeedbackForm, identifiers::kCommunity,
                                             "file:///share/pendra/Third%20Party%20Components.pdf"}));
  EXPECT_TRUE(identifiers::kFeedbackForm.endsWith(u"?a=GenNewRecord"));
}

TEST(ShellCommands, TheAboutBoxNamesTheBuildAndStatisticsTheVersion) {
  EXPECT_EQ(versionText(), QString(u"Version " + bundleVersion()));
  EXPECT_NE(bundleVersion(), shortVersion());
}

}  // namespace
}  // namespace pendra
