#include "platform/DesktopWorkspace.h"

#include <gtest/gtest.h>

#include <QDBusMessage>
#include <QDBusVirtualObject>

#include "PrivateBus.h"
#include "support/Events.h"
#include "support/TestPlaces.h"

namespace pendra {
namespace {

const QString kVantor = "com.vantor.vantor";

/// A file manager that notes what it is asked to show.
class FileManager final : public QDBusVirtualObject {
 public:
  explicit FileManager(QDBusConnection bus) {
    bus.registerVirtualObject("/org/freedesktop/FileManager1", this);
    bus.registerService("org.freedesktop.FileManager1");
  }
  [[nodiscard]] QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    if (message.member() != u"ShowItems") return false;
    shown_ = message.arguments().constFirst().toStringList();
    return bus.send(message.createReply());
  }
  [[nodiscard]] const QStringList& shown() const { return shown_; }

 private:
  QStringList shown_;
};

class DesktopWorkspaceTest : public testing::Test {
 protected:
  DesktopWorkspace workspaceOn(const QDBusConnection& bus) {
    return DesktopWorkspace(bus, {places_.path("applications")}, [this](const QString& address) {
      opened_ << address;
      return true;
    });
  }

  TestPlaces places_;
  PrivateBus bus_;
  QStringList opened_;
};

TEST_F(DesktopWorkspaceTest, AnApplicationRunsWhileItsNameHasAnOwner) {
  const auto workspace = workspaceOn(bus_.connect());
  EXPECT_FALSE(workspace.isRunning(kVantor));
  auto vantor = bus_.connect();
  vantor.registerService(kVantor);
  EXPECT_TRUE(workspace.isRunning(kVantor));
  vantor.unregisterService(kVantor);
  EXPECT_FALSE(workspace.isRunning(kVantor));
}

TEST_F(DesktopWorkspaceTest, TellsLaunchesByTheirNamesForPeopleWhileObserved) {
  QDir().mkpath(places_.path("applications"));
  ASSERT_TRUE(writeFile(places_.path("applications/com.vantor.vantor.desktop"),
                        "[Other]\nName=No\n[Desktop Entry]\nName[de]=Nein\nName = Vantor Desktop\n"));
  auto workspace = workspaceOn(bus_.connect());
  QStringList launched;
  auto observing = workspace.observeLaunches([&](const QString& name) { launched << name; });
  auto other = bus_.connect();
  other.registerService(kVantor);
  other.unregisterService(kVantor);
  other.registerService("org.example.Editor");
  EXPECT_TRUE(eventually([&] { return launched.size() >= 2; }));
  EXPECT_EQ(launched, QStringList({"Vantor Desktop", "Editor"}));

  observing.reset();
  auto stillObserving =
      workspace.observeLaunches([&](const QString& name) { launched << u"second " + name; });
  other.registerService("org.example.Viewer");
  EXPECT_TRUE(eventually([&] { return launched.size() >= 3; }));
  EXPECT_EQ(launched.mid(2), QStringList("second Viewer"));
}

TEST_F(DesktopWorkspaceTest, RevealsThroughTheFileManager) {
  auto workspace = workspaceOn(bus_.connect());
  const FileManager files(bus_.connect());
  workspace.reveal("/home/ada/My Company.vco");
  EXPECT_TRUE(eventually([&] { return !files.shown().isEmpty(); }));
  EXPECT_EQ(files.shown(), QStringList("file:///home/ada/My%20Company.vco"));
  EXPECT_TRUE(opened_.isEmpty());
}

TEST_F(DesktopWorkspaceTest, WithoutAFileManagerRevealsByOpeningTheFolder) {
  auto workspace = workspaceOn(bus_.connect());
  workspace.reveal("/home/ada/My Company.vco");
  EXPECT_TRUE(eventually([&] { return !opened_.isEmpty(); }));
  EXPECT_EQ(opened_, QStringList("file:///home/ada"));
}

TEST_F(DesktopWorkspaceTest, WithoutABusNothingRuns) {
  auto workspace = workspaceOn(QDBusConnection("no such connection"));
  EXPECT_FALSE(workspace.isRunning(kVantor));
  EXPECT_NE(workspace.observeLaunches([](const QString&) {}), nullptr);
  workspace.reveal("/home/ada/Company.vco");
  EXPECT_EQ(opened_, QStringList("file:///home/ada"));
}

}  // namespace
}  // namespace pendra
