#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QVariantMap>

#include "platform/GlobalKey.h"

class QDBusObjectPath;

namespace pendra {

/// What is spoken with the portal about the key: whether there are some, a session, and the key in it. Each
/// request is answered by a signal of an object of its own, which is listened to before it is made.
class KeySession final : public QObject {
  Q_OBJECT

 public:
  KeySession(const QDBusConnection& session, PortalKey& owner);

  void choose(const QString& whatItDoes);

 private:
  Q_SLOT void versionTold(const QDBusMessage& reply);
  Q_SLOT void sessionMade(uint response, const QVariantMap& results);
  Q_SLOT void pressed(const QDBusObjectPath& session, const QString& key, qulonglong when,
                      const QVariantMap& more);

  void bind();

  QDBusConnection session_;
  PortalKey& owner_;
  QString whatItDoes_;
  QString path_;  ///< of the session; empty while there is none
};

}  // namespace pendra
