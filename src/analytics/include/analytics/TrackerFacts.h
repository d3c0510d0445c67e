#pragma once

#include <QMap>
#include <QString>
#include <functional>

namespace pendra {

/// What is told about the program and the machine with every event.
struct TrackerFacts {
  QString shortVersion;
  QString os;
  QString model;             ///< the machine's
  QString screenResolution;  ///< of the main screen's visible area, "1920 x 1053"
  std::function<bool()> isDark;

  /// Those of the running program. Needs a QGuiApplication.
  static TrackerFacts ofMachine();
};

/// Reads the lines `"key" = "value";` of a strings file; empty when there is no such file.
QMap<QString, QString> readStrings(const QString& path);

}  // namespace pendra
