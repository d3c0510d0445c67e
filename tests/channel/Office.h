#pragma once

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "Peers.h"

namespace pendra {

/// A row of the lists, for the typed functions.
struct Row {
  std::optional<QString> name;
  std::optional<QString> vtObjectID;
  std::optional<QString> parentObjectID;
  friend bool operator==(const Row&, const Row&) = default;
};

/// Many rows with some names in common, in several datagrams.
inline std::vector<Row> manyRows(int count) {
  std::vector<Row> rows;
  for (int i = 0; i < count; ++i)
    rows.push_back({QStringLiteral("Müller & Söhne %1").arg(i / 2), QString::number(i), {}});
  return rows;
}

inline QJsonObject company(const std::vector<Row>& customers) {
  QJsonArray list;
  for (const Row& row : customers)
    list.append(QJsonObject{{QStringLiteral("name"), *row.name}, {QStringLiteral("id"), *row.vtObjectID}});
  return {{QStringLiteral("companyFileName"), QJsonValue()},
          {QStringLiteral("employees"), QJsonArray{QStringLiteral("Ann"), QStringLiteral("Bob")}},
          {QStringLiteral("customers"), list}};
}

/// A folder with a company file in it, and the endpoints where Pendra and Vantor have them.
class Office {
 public:
  explicit Office(const std::vector<Row>& customers) {
    chmod(folder_.path().toLocal8Bit().constData(), 0755);
    setCompanyFile(QJsonDocument(company(customers)).toJson());
  }

  void setCompanyFile(const QByteArray& content) const {
    QFile file(folder_.filePath(QStringLiteral("company.json")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  /// Vantor, on no bus unless one is given.
  std::unique_ptr<Peer> vantor(const QStringList& faults = {}, const QString& bus = {}) const {
    QStringList arguments{QStringLiteral("--company"), folder_.filePath(QStringLiteral("company.json")),
                          QStringLiteral("--cache"),   folder_.path(),
                          QStringLiteral("--records"), folder_.filePath(QStringLiteral("records"))};
    if (bus.isEmpty()) arguments += QStringLiteral("--no-bus");
    return std::make_unique<Peer>(QStringLiteral(PENDRA_VANTOR_SIM), arguments + faults, bus);
  }

  QString socket(const char* name) const {
    return folder_.path() + u"/com.corvel.pendra/" + QString::fromLatin1(name);
  }

  std::unique_ptr<IPCMgr> pendra() const {
    auto made = IPCMgr::initForPath(socket("vtserver.socket"), PDToVTProtocol, socket("pdclient.socket"),
                                    supportedClassesOfPDToVT());
    EXPECT_TRUE(made);
    return std::move(made).value();
  }

  int recordCount() const {
    QFile file(folder_.filePath(QStringLiteral("records")));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return static_cast<int>(file.readAll().count('\n'));
  }

 private:
  QTemporaryDir folder_{QStringLiteral("/tmp/twinXXXXXX")};
};

}  // namespace pendra
