#pragma once

#include <QString>

namespace pendra {

/// The folders that the program works in, absolute and without a closing slash. Injected, so that a
/// test works in a folder of its own.
struct Places {
  QString documents;  ///< the user's documents
  QString caches;     ///< the user's caches; the sockets lie in a folder of Pendra's in it
  QString config;     ///< the user's settings; the defaults lie in a folder of Pendra's in it
  QString state;      ///< what programs keep for the user; the backups lie in a folder of Pendra's in it

  /// The folders of the user who runs the program.
  static Places ofUser();
  /// The file of the user's defaults.
  [[nodiscard]] QString defaultsFile() const;
  /// The folder of the backups that make themselves, unless the user has chosen another.
  [[nodiscard]] QString backupFolder() const;
};

}  // namespace pendra
