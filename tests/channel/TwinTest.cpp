#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "Fixtures.h"

namespace pendra {
namespace {

using namespace operations;

const std::string kTwin = kPython + PENDRA_TWIN + " ";

/// Many rows with some names in common, in several datagrams.
ArchiveValue::Array manyRows(int count) {
  ArchiveValue::Array rows;
  for (int i = 0; i < count; ++i)
    rows.push_back(ListRow{.name = QStringLiteral("Müller & Söhne %1").arg(i / 2), .id = QString::number(i)});
  return rows;
}

TEST(Twin, ReadsOurCallsAndAnswersInEverySpelling) {
  const SocketFolder folder;
  const auto client = folder.client();
  const Beside twin([&] {
    EXPECT_EQ(linesOf(kTwin + "server " + folder.bytes("server").toStdString() + " 3").front(), "served");
  });
  while (access(folder.bytes("server").constData(), F_OK) != 0) std::this_thread::yield();
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
  const auto answerTo = [&](const Call& call) {
    const CallOutcome outcome = client->call(call);
    const auto* answer = std::get_if<Answer>(&outcome);
    EXPECT_NE(answer, nullptr) << told(outcome);
    return answer ? answer->value : ArchiveValue(false);
  };
  EXPECT_EQ(answerTo({&kSubmitTime, {ArchiveValue(values)}}), ArchiveValue(values));
  EXPECT_TRUE(answerTo({&kSubmitTime, {ArchiveValue()}}).isNil());
  EXPECT_TRUE(answerTo({&kJobs, {}}).isNil());
}

TEST(Twin, CallsOurServingSideInEverySpelling) {
  const SocketFolder folder;
  int served = 0;
  const auto server = folder.server([&](const Operation& operation, const ArchiveValue::Array& arguments) {
    ++served;
    if (operation.name == kCustomers.name) return ArchiveValue(manyRows(3000));
    return arguments.isEmpty() ? ArchiveValue() : arguments.first();
  });
  QList<QByteArray> answers;
  const Beside serving([&] {
    while (served < 3) server->serveInput();
  });
  answers = linesOf(kTwin + "client " + folder.bytes("server").toStdString() + ' ' +
                    folder.bytes("client").toStdString() +
                    R"( '[["getCustomersArray"], ["companyFileName"], ["submitTime:", "<ü/>"]]')");
  ASSERT_EQ(answers.size(), 3);
  const auto rows = QJsonDocument::fromJson(answers[0]).array();
  ASSERT_EQ(rows.size(), 3000);
  EXPECT_EQ(rows.at(2999).toObject()[QStringLiteral("name")].toString(),
            QStringLiteral("Müller & Söhne 1499"));
  EXPECT_EQ(answers[1], "null");
  EXPECT_EQ(answers[2], R"("<\u00fc/>")");
}

}  // namespace
}  // namespace pendra
