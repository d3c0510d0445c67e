#pragma once

#include <sys/prctl.h>

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <csignal>

#include "Fixtures.h"

namespace pendra {

/// The process's one application object, for what needs an event loop.
inline QCoreApplication& application() {
  static int count = 1;
  static std::array<char*, 2> arguments{const_cast<char*>("test-channel"), nullptr};
  static QCoreApplication instance(count, arguments.data());
  return instance;
}

/// Another program that says "ready" on its standard output.
class Peer {
 public:
  Peer(const QString& program, const QStringList& arguments, const QString& bus = {}) {
    application();
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus);
    process_.setProcessEnvironment(environment);
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    process_.start(program, arguments);
    EXPECT_TRUE(process_.waitForReadyRead(20000)) << program.toStdString();
  }
  ~Peer() {
    process_.kill();
    process_.waitForFinished();
  }
  Q_DISABLE_COPY_MOVE(Peer)

  /// Sends it a signal.
  void tell(int signal) const { ::kill(static_cast<pid_t>(process_.processId()), signal); }
  QByteArray said() { return process_.readLine(); }
  int exitCode() {
    EXPECT_TRUE(process_.waitForFinished(20000));
    return process_.exitCode();
  }

 private:
  QProcess process_;
};

/// Many rows with some names in common, in several datagrams.
inline ArchiveValue::Array manyRows(int count) {
  ArchiveValue::Array rows;
  for (int i = 0; i < count; ++i)
    rows.push_back(ListRow{.name = QStringLiteral("Müller & Söhne %1").arg(i / 2), .id = QString::number(i)});
  return rows;
}

inline QJsonObject company(const ArchiveValue::Array& customers) {
  QJsonArray list;
  for (const ArchiveValue& value : customers) {
    const auto& row = *value.as<ListRow>();
    list.append(QJsonObject{{QStringLiteral("name"), *row.name}, {QStringLiteral("id"), *row.id}});
  }
  return {{QStringLiteral("companyFileName"), QJsonValue()}, {QStringLiteral("customers"), list}};
}

/// A folder with a company file in it, and the endpoints where Pendra and Vantor have them.
class Office {
 public:
  explicit Office(const ArchiveValue::Array& customers) {
    setCompanyFile(QJsonDocument(company(customers)).toJson());
  }

  void setCompanyFile(const QByteArray& content) const {
    QFile file(folder_.filePath(QStringLiteral("company.json")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  /// Vantor, on no bus unless one is given.
  std::unique_ptr<Peer> vantor(const QString& bus = {}) const {
    QStringList arguments{QStringLiteral("--company"), folder_.filePath(QStringLiteral("company.json")),
                          QStringLiteral("--cache"),   folder_.path(),
                          QStringLiteral("--records"), folder_.filePath(QStringLiteral("records"))};
    if (bus.isEmpty()) arguments += QStringLiteral("--no-bus");
    return std::make_unique<Peer>(QStringLiteral(PENDRA_VANTOR_SIM), arguments, bus);
  }

  QString socket(const char* name) const {
    return folder_.path() + u"/com.corvel.pendra/" + QString::fromLatin1(name);
  }

  std::unique_ptr<CallingEnd> pendra() const {
    auto made = CallingEnd::bound(socket("vtserver.socket"), socket("pdclient.socket"));
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

/// The value of an answer; nil, after a complaint, when there is none.
inline ArchiveValue valueOf(const CallOutcome& outcome) {
  const auto* answer = std::get_if<Answer>(&outcome);
  EXPECT_NE(answer, nullptr) << told(outcome);
  return answer ? answer->value : ArchiveValue();
}

}  // namespace pendra
