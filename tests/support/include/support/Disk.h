#pragma once

#include <QStringList>
#include <limits>

namespace pendra {

/// A disk of which a test says what it cannot do, for as long as this lives. One at a time.
class [[nodiscard]] Disk {
 public:
  enum class Locks { All, OnlyOfFilesToWrite, None };

  Disk();
  ~Disk();
  Disk(const Disk&) = delete;
  Disk& operator=(const Disk&) = delete;

  /// Which files can be locked. As on a network file system, on some only those that are open for writing.
  Locks locks = Locks::All;
  /// Whether a locked file can be read and written only by who has the lock, as on the Windows network.
  bool locksRefuseOthers = false;
  /// Whether what lies at a path is that of another disk from now on, with files of the same numbers.
  bool isAnother = false;
  /// So often something can still be brought to it.
  int syncs = std::numeric_limits<int>::max();
  /// What was brought to the disk, oldest first: files and folders.
  QStringList synced;
};

}  // namespace pendra
