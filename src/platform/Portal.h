#pragma once

#include <QString>

namespace pendra {

/// Where the desktop's portal is asked on the session bus.
inline const QString kPortal = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString kPortalObject = QStringLiteral("/org/freedesktop/portal/desktop");

}  // namespace pendra
