#pragma once

#include <QString>

/// What Pendra is called by others, and what it calls them.
namespace pendra::identifiers {

/// Pendra's own identifier: its name on the session bus, and of its folders.
inline const QString kPendra = QStringLiteral("com.corvel.pendra");
/// Vantor's identifier on the session bus.
inline const QString kVantor = QStringLiteral("com.vantor.vantor");

}  // namespace pendra::identifiers
