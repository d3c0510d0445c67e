#pragma once

#include <QString>

namespace pendra {

/// The folder of the program's resources, absolute: "../share/pendra" beside the folder of the program,
/// where an installation puts them and where the build keeps its own copy.
QString resourceFolder();
/// Where in it translations lie ("pendra_de.qm").
QString translationFolder();

}  // namespace pendra
