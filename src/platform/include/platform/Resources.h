#pragma once

#include <QString>

namespace pendra {

/// The folder of the program's resources, absolute: "share/pendra" of the installation or the build, whose
/// programs lie in its "bin" and, for those that nobody starts by hand, in its "libexec/pendra".
QString resourceFolder();
/// That of the programs which nobody starts by hand.
QString helperFolder();
/// Where in it translations lie ("pendra_de.qm").
QString translationFolder();

}  // namespace pendra
