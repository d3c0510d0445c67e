#include "PrivateBus.h"

#include <gtest/gtest.h>

#include <QUuid>

namespace pendra {

PrivateBus::PrivateBus() {
  daemon_.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
  EXPECT_TRUE(daemon_.waitForReadyRead()) << "dbus-daemon did not start";
  address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
}

PrivateBus::~PrivateBus() {
  for (const QString& connection : connections_) QDBusConnection::disconnectFromBus(connection);
  daemon_.kill();
  daemon_.waitForFinished();
}

QDBusConnection PrivateBus::connect() {
  connections_ << QUuid::createUuid().toString();
  return QDBusConnection::connectToBus(address_, connections_.constLast());
}

}  // namespace pendra
