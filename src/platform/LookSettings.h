#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QObject>

#include "platform/DesktopLook.h"

namespace pendra {

/// The portal's settings of how things look, as they come and change.
class LookSettings final : public QObject {
  Q_OBJECT

 public:
  LookSettings(const QDBusConnection& session, PortalLook& owner);

  /// Asks the portal of that session, on whatever thread, and waits for it a moment where it runs already. An
  /// empty message where there was no answer in that time.
  [[nodiscard]] static QDBusMessage ask(const QDBusConnection& session);
  /// Takes what was answered; where nothing was, asks again without waiting.
  void read(const QDBusMessage& reply);

 private:
  Q_SLOT void changed(const QString& group, const QString& key, const QDBusVariant& value);
  Q_SLOT void answered(const QDBusMessage& reply);

  QDBusConnection session_;
  PortalLook& owner_;
};

}  // namespace pendra
