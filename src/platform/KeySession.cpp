#include "KeySession.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>

#include "Portal.h"

namespace pendra {

namespace {

/// A key of the program's, in the portal's form.
struct PortalShortcut {
  QString name;
  QVariantMap properties;
};

QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcut& one) {
  argument.beginStructure();
  argument << one.name << one.properties;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcut& one) {
  argument.beginStructure();
  argument >> one.name >> one.properties;
  argument.endStructure();
  return argument;
}

}  // namespace

}  // namespace pendra

Q_DECLARE_METATYPE(pendra::PortalShortcut)

namespace pendra {

namespace {

const QString kShortcuts = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString kStartOrStop = QStringLiteral("start-or-stop");
const QString kToken = QStringLiteral("pendra_keys");

QDBusMessage callOf(const QString& method) {
  return QDBusMessage::createMethodCall(kPortal, kPortalObject, kShortcuts, method);
}

/// Where the portal will answer a request of that token.
QString requestPath(const QDBusConnection& bus, const QString& token) {
  const QString caller = bus.baseService().mid(1).replace(u'.', u'_');
  return kPortalObject + u"/request/" + caller + u'/' + token;
}

}  // namespace

KeySession::KeySession(const QDBusConnection& session, PortalKey& owner) : session_(session), owner_(owner) {
  qDBusRegisterMetaType<QDBusObjectPath>();  // before a slot that takes one is connected
  qDBusRegisterMetaType<PortalShortcut>();
  qDBusRegisterMetaType<QList<PortalShortcut>>();
  session_.connect(kPortal, kPortalObject, kShortcuts, QStringLiteral("Activated"), this,
                   SLOT(pressed(QDBusObjectPath, QString, qulonglong, QVariantMap)));
  auto call = QDBusMessage::createMethodCall(
      kPortal, kPortalObject, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
  session_.callWithCallback(call << kShortcuts << QStringLiteral("version"), this,
                            SLOT(versionTold(QDBusMessage)));
}

void KeySession::versionTold(const QDBusMessage& reply) {
  owner_.isOffered_ = qdbus_cast<QDBusVariant>(reply.arguments().value(0)).variant().toUInt() > 0;
  if (owner_.isOffered_) owner_.changes().changed();
}

void KeySession::choose(const QString& whatItDoes) {
  whatItDoes_ = whatItDoes;
  if (!path_.isEmpty()) return bind();
  session_.connect(kPortal, requestPath(session_, kToken), QStringLiteral("org.freedesktop.portal.Request"),
                   QStringLiteral("Response"), this, SLOT(sessionMade(uint, QVariantMap)));
  const QVariantMap options{{QStringLiteral("handle_token"), kToken},
                            {QStringLiteral("session_handle_token"), kToken}};
  session_.asyncCall(callOf(QStringLiteral("CreateSession")) << options);
}

void KeySession::sessionMade(uint response, const QVariantMap& results) {
  path_ = results.value(QStringLiteral("session_handle")).toString();
  if (response == 0 && !path_.isEmpty()) bind();
}

/// Where the desktop knows the key already it asks nothing.
void KeySession::bind() {
  const QList<PortalShortcut> keys{{kStartOrStop, {{QStringLiteral("description"), whatItDoes_}}}};
  session_.asyncCall(callOf(QStringLiteral("BindShortcuts"))
                     << QVariant::fromValue(QDBusObjectPath(path_)) << QVariant::fromValue(keys) << QString()
                     << QVariantMap());
}

void KeySession::pressed(const QDBusObjectPath& session, const QString& key, qulonglong, const QVariantMap&) {
  if (session.path() == path_ && key == kStartOrStop) owner_.presses().changed();
}

std::unique_ptr<PortalKey> PortalKey::ofUser() {
  return std::make_unique<PortalKey>(QDBusConnection::sessionBus());
}

PortalKey::PortalKey(const QDBusConnection& session) : keys_(std::make_unique<KeySession>(session, *this)) {}
PortalKey::~PortalKey() = default;

void PortalKey::choose(const QString& whatItDoes) { keys_->choose(whatItDoes); }

}  // namespace pendra
