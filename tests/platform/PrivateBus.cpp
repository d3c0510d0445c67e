#include "PrivateBus.h"

#include <gtest/gtest.h>

#include <QUuid>

namespace pendra {

namespace {

/// The session's own, but without the services of this machine, which it would start.
constexpr const char* kConfiguration =
    "<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><policy context='default'>"
    "<allow send_destination='*' eavesdrop='true'/><allow eavesdrop='true'/><allow "
    "own='*'/></policy></busconfig>";

}  // namespace

PrivateBus::PrivateBus() {
  EXPECT_TRUE(configuration_.open() && configuration_.write(kConfiguration) > 0 && configuration_.flush());
  daemon_.start("dbus-daemon", {"--config-file=" + configuration_.fileName(), "--nofork", "--print-address"});
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
