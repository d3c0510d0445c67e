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

  void read();

 private:
  Q_SLOT void changed(const QString& group, const QString& key, const QDBusVariant& value);
  Q_SLOT void answered(const QDBusMessage& reply);

  QDBusConnection session_;
  PortalLook& owner_;
};

}  // namespace pendra
