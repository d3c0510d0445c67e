#include <QDBusConnection>
#include <QDBusConnectionInterface>

#include "Office.h"
#include "platform/Identifiers.h"

namespace pendra {
namespace {

using namespace operations;

const QString kPython = QStringLiteral("python3");
const QString kTwin = QStringLiteral(PENDRA_TWIN);

TEST(Twin, ReadsOurCallsAndAnswersInEverySpelling) {
  const SocketFolder folder;
  const auto client = folder.client();
  const Peer twin(kPython, {kTwin, QStringLiteral("server"), folder.path("server"),
                            QStringLiteral(R"({"submitTime:": "argument", "getJobsArray": null})"),
                            QStringLiteral("foreign")});
  const ArchiveValue::Array rows = manyRows(2000);
  const ArchiveValue::Array values{QStringLiteral("a"),
                                   QStringLiteral("a"),
                                   QStringLiteral("✓"),
                                   rows,
                                   NilMarker(),
                                   qint64{-5},
                                   qint64{1} << 40,
                                   0.25,
                                   true,
                                   ArchiveValue::Array{},
                                   rows.first()};
  EXPECT_EQ(valueOf(client->call({&kSubmitTime, {ArchiveValue(values)}})), ArchiveValue(values));
  EXPECT_TRUE(valueOf(client->call({&kSubmitTime, {ArchiveValue()}})).isNil());
  EXPECT_TRUE(valueOf(client->call({&kJobs, {}})).isNil());
}

TEST(Twin, CallsTheStandInForVantorInEverySpelling) {
  const Office office(manyRows(3000));
  const auto vantor = office.vantor();
  application();
  QProcess twin;
  twin.start(
      kPython,
      {kTwin, QStringLiteral("client"), office.socket("vtserver.socket"), office.socket("pdclient.socket"),
       QStringLiteral(R"([["getCustomersArray"], ["companyFileName"], ["submitTime:", "<ü/>"]])")});
  ASSERT_TRUE(twin.waitForFinished(60000));
  ASSERT_EQ(twin.exitCode(), 0) << twin.readAllStandardError().toStdString();
  const auto rows = QJsonDocument::fromJson(twin.readLine()).array();
  ASSERT_EQ(rows.size(), 3000);
  EXPECT_EQ(rows.at(2999).toObject()[QStringLiteral("name")].toString(),
            QStringLiteral("Müller & Söhne 1499"));
  EXPECT_EQ(twin.readLine(), "null\n");
  EXPECT_EQ(twin.readLine(), "true\n");
  EXPECT_EQ(office.recordCount(), 1);
}

TEST(VantorSim, OwnsVantorsNameForAsLongAsItRuns) {
  Peer daemon(QStringLiteral("dbus-daemon"),
              {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
  const QString address = QString::fromUtf8(daemon.said()).trimmed();
  auto bus = QDBusConnection::connectToBus(address, QStringLiteral("test"));
  const auto isRunning = [&] { return bus.interface()->isServiceRegistered(identifiers::kVantor).value(); };
  const Office office({});
  const auto vantor = office.vantor(address);
  EXPECT_TRUE(isRunning());
  vantor->tell(SIGTERM);
  EXPECT_EQ(vantor->exitCode(), 0);
  EXPECT_FALSE(isRunning());
  QDBusConnection::disconnectFromBus(QStringLiteral("test"));
}

TEST(VantorSim, ReadsTheCompanyFileAgainWhenItIsTold) {
  const Office office({});
  const auto vantor = office.vantor();
  const auto channel = office.pendra();
  EXPECT_TRUE(valueOf(channel->call({&kCompanyFileName, {}})).isNil());
  EXPECT_EQ(valueOf(channel->call({&kCanTalkToPendra, {}})), ArchiveValue(true));
  office.setCompanyFile(R"({"companyFileName": "/home/ann/Books.cmp", "accepts": false})");
  // A signal and a call reach it by different ways, so it is asked until it has heard.
  ArchiveValue company;
  for (int i = 0; i < 10000 && company.isNil(); ++i) {
    vantor->tell(SIGHUP);
    company = valueOf(channel->call({&kCompanyFileName, {}}));
  }
  EXPECT_EQ(company, ArchiveValue(QStringLiteral("/home/ann/Books.cmp")));
  EXPECT_TRUE(valueOf(channel->call({&kCanTalkToPendra, {}})).isNil());
}

}  // namespace
}  // namespace pendra
