#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>

#include "Office.h"
#include "platform/Identifiers.h"

namespace pendra {
namespace {

TEST(VantorSim, OwnsVantorsNameForAsLongAsItRuns) {
  Peer daemon(QStringLiteral("dbus-daemon"),
              {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
  const QString address = QString::fromUtf8(daemon.said()).trimmed();
  auto bus = QDBusConnection::connectToBus(address, QStringLiteral("test"));
  const auto isRunning = [&] { return bus.interface()->isServiceRegistered(identifiers::kVantor).value(); };
  const Office office({});
  const auto vantor = office.vantor({}, address);
  EXPECT_TRUE(isRunning());
  vantor->tell(SIGTERM);
  vantor->waitForItsEnd();
  EXPECT_EQ(vantor->exitCode(), 0);
  EXPECT_FALSE(isRunning());
  QDBusConnection::disconnectFromBus(QStringLiteral("test"));
}

TEST(VantorSim, ReadsTheCompanyFileAgainWhenItIsTold) {
  const Office office({});
  const auto vantor = office.vantor();
  const auto channel = office.pendra();
  PDToVTProxy<Row> remoteServer(*channel);
  // A signal and a call reach it by different ways, so it is asked until it has heard.
  const auto companyBecomes = [&](const std::optional<QString>& name) {
    vantor->tell(SIGHUP);
    for (int i = 0; i < 10000; ++i)
      if (remoteServer.companyFileName() == name) return true;
    return false;
  };
  EXPECT_EQ(remoteServer.companyFileName(), std::nullopt);
  office.setCompanyFile(R"({"companyFileName": "/home/ann/Books.cmp", "accepts": false})");
  EXPECT_TRUE(companyBecomes(QStringLiteral("/home/ann/Books.cmp")));
  EXPECT_FALSE(remoteServer.canTalkToPendra());
  EXPECT_EQ(remoteServer.getEmployeeNamesArray(), QStringList());
  office.setCompanyFile(R"({"companyFileName": null})");
  EXPECT_TRUE(companyBecomes(std::nullopt));
}

}  // namespace
}  // namespace pendra
