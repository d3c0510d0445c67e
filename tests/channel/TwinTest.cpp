#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "Office.h"
#include "support/Rows.h"

namespace pendra {
namespace {

const QString kPython = QStringLiteral("python3");
const QString kTwin = QStringLiteral(PENDRA_TWIN);

TEST(Twin, ReadsOurCallsAndAnswersInEverySpelling) {
  const SocketFolder folder;
  const Peer twin(kPython, {kTwin, QStringLiteral("server"), folder.path("server"),
                            QStringLiteral(R"({"echo:": "argument"})"), QStringLiteral("foreign")});
  const auto client = clientOf(folder);
  ArchiveValue::Array rows;
  for (const Row& row : manyRows(2000)) rows.push_back(archivedRow(row));
  const ArchiveValue::Array values{QStringLiteral("a"),
                                   QStringLiteral("a"),
                                   QStringLiteral("✓"),
                                   rows,
                                   IPCNilArg::nilArg(),
                                   qint64{-5},
                                   qint64{1} << 40,
                                   0.25,
                                   true,
                                   ArchiveValue::Array{},
                                   rows.first()};
  EXPECT_EQ(client->forwardInvocation(u"echo:", {ArchiveValue(values)}), ArchiveValue(values));
  EXPECT_TRUE(client->forwardInvocation(u"echo:", {ArchiveValue()}).isNil());
  EXPECT_TRUE(client->forwardInvocation(u"do", {}).isNil());
}

TEST(Twin, CallsOurServingSideInEverySpelling) {
  const auto customers = manyRows(3000);
  const Office office(customers);
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
  EXPECT_EQ(rows.at(2999).toObject()[QStringLiteral("name")].toString(), *customers.back().name);
  EXPECT_EQ(twin.readLine(), "null\n");
  EXPECT_EQ(twin.readLine(), "true\n");
  EXPECT_EQ(office.recordCount(), 1);
}

TEST(Vantor, AnswersTheSevenOperations) {
  const auto customers = manyRows(3000);
  const Office office(customers);
  const auto vantor = office.vantor();
  const auto channel = office.pendra();
  PDToVTProxy<Row> remoteServer(*channel);
  EXPECT_EQ(remoteServer.companyFileName(), std::nullopt);
  EXPECT_EQ(remoteServer.getEmployeeNamesArray(),
            (QStringList{QStringLiteral("Ann"), QStringLiteral("Bob")}));
  EXPECT_EQ(remoteServer.getCustomersArray(), customers);
  EXPECT_EQ(remoteServer.getServicesArray(), std::vector<Row>{});
  EXPECT_EQ(remoteServer.getJobsArray(), std::vector<Row>{});
  EXPECT_TRUE(remoteServer.canTalkToPendra());
  EXPECT_EQ(remoteServer.submitTime(QStringLiteral("<time/>")), ArchiveValue(true));
  EXPECT_EQ(office.recordCount(), 1);
}

/// A Vantor that misbehaves in the first call. The second call goes to a healthy one, started anew unless the
/// first one has stayed healthy enough to be asked again.
struct Misbehaviour {
  const char* name;
  QStringList fault;
  const char* failure;
  bool restarts;
  int records;  ///< how many Vantor has after both calls
};
void PrintTo(const Misbehaviour& row, std::ostream* out) { *out << row.name; }

class Misbehaving : public testing::TestWithParam<Misbehaviour> {};

TEST_P(Misbehaving, IsANamedFailureAndTheChannelGoesOn) {
  const Office office(manyRows(3000));
  auto vantor = office.vantor(GetParam().fault);
  const auto channel = office.pendra();
  PDToVTProxy<Row> remoteServer(*channel);
  // Whoever dies need not be waited for; the others answer in their own time or have the full limit.
  const bool dies = GetParam().fault.join(u' ').contains(QStringLiteral("die"));
  if (dies) channel->setTimeLimits(kShortLimits);
  QElapsedTimer time;
  time.start();
  EXPECT_EQ(failureOf([&] {
              if (GetParam().fault.contains(QStringLiteral("die-in-list")))
                (void)remoteServer.getCustomersArray();
              else
                remoteServer.submitTime(QStringLiteral("<first/>"));
            }),
            GetParam().failure);
  std::printf("%s: %lld ms\n", GetParam().name, time.elapsed());
  channel->setTimeLimits({});
  if (dies) vantor->waitForItsEnd();
  if (GetParam().restarts) {
    vantor->end();
    vantor = office.vantor();
  }
  EXPECT_EQ(remoteServer.submitTime(QStringLiteral("<second/>")), ArchiveValue(true));
  EXPECT_EQ(office.recordCount(), GetParam().records);
}

const QString kFault = QStringLiteral("--fault");
const char* const kTimeout = "VTIPCTimeout: timeout waiting for return result for submitTime:";

INSTANTIATE_TEST_SUITE_P(
    Vantor, Misbehaving,
    testing::Values(
        Misbehaviour{"Late", {kFault, QStringLiteral("late=700")}, "", false, 2},
        Misbehaviour{"SlowToRead", {kFault, QStringLiteral("slow-read=500")}, "", false, 2},
        Misbehaviour{"Silent", {kFault, QStringLiteral("no-answer")}, kTimeout, true, 2},
        Misbehaviour{"WronglyNamed", {kFault, QStringLiteral("wrong-name")}, "", true, 2},
        Misbehaviour{"Garbage",
                     {kFault, QStringLiteral("garbage")},
                     "VTIPCUnArchiverFailure: error: not a property list",
                     true,
                     2},
        Misbehaviour{"DiesBeforeTheRecord", {kFault, QStringLiteral("die-before-record")}, kTimeout, true, 1},
        Misbehaviour{"DiesAfterTheRecord", {kFault, QStringLiteral("die-after-record")}, kTimeout, true, 2},
        Misbehaviour{"DiesInMidList",
                     {kFault, QStringLiteral("die-in-list")},
                     "VTIPCTimeout: timeout waiting for return result for getCustomersArray",
                     true,
                     1},
        Misbehaviour{"Restarts", {}, "", true, 2}),
    RowName());

}  // namespace
}  // namespace pendra
