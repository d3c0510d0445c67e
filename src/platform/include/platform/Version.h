#pragma once
// Two numbers: the version is what people and statistics name, the bundle version tells builds apart.

#include <QString>

namespace pendra {

/// "1.0.0".
QString shortVersion();
/// "1.0.0.1": the version and the build's number.
QString bundleVersion();

}  // namespace pendra
