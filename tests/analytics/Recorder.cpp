#include "Recorder.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpSocket>

#include "platform/Identifiers.h"

namespace pendra {

namespace {

/// Allows any page to post, as a service for web pages does.
constexpr const char* kAnswer =
    "HTTP/1.1 200 OK\r\nAccess-Control-Allow-Origin: *\r\nAccess-Control-Allow-Headers: content-type\r\n"
    "Content-Length: 2\r\n\r\n{}";

}  // namespace

Recorder::Recorder() {
  EXPECT_TRUE(server_.listen(QHostAddress::LocalHost));
  QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] { accept(); });
}

QString Recorder::address() const { return QStringLiteral("http://127.0.0.1:%1/").arg(server_.serverPort()); }

QStringList Recorder::names() const {
  QStringList names;
  for (const auto& event : events_) names << event.toObject()["event_type"].toString();
  return names;
}

void Recorder::accept() {
  ++connections_;
  QTcpSocket* const socket = server_.nextPendingConnection();  // the server owns it
  const auto received = std::make_shared<QByteArray>();
  QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, received] {
    received->append(socket->readAll());
    while (take(*received)) socket->write(kAnswer);
  });
}

bool Recorder::take(QByteArray& received) {
  const qsizetype head = received.indexOf("\r\n\r\n");
  if (head < 0) return false;
  const QByteArray lower = received.first(head).toLower();
  if (lower.startsWith("options ")) {  // the engine asks whether the page may post
    received.remove(0, head + 4);
    return true;
  }
  const QByteArray field = "content-length:";
  const qsizetype at = lower.indexOf(field) + field.size();
  const qsizetype length = lower.mid(at, lower.indexOf('\r', at) - at).trimmed().toLongLong();
  if (received.size() < head + 4 + length) return false;
  const QJsonObject body = QJsonDocument::fromJson(received.mid(head + 4, length)).object();
  EXPECT_EQ(body["api_key"].toString(), identifiers::kAnalyticsKey);
  for (const auto& event : body["events"].toArray()) events_ << event;
  received.remove(0, head + 4 + length);
  return true;
}

}  // namespace pendra
