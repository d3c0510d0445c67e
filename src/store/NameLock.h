#pragma once

#include <QString>

#include "platform/Result.h"

namespace pendra {

/// A lock of a document's name: a hidden file beside it that one process holds. It works where files cannot
/// be locked for reading, as on network file systems, and goes with its process. Held while it lives.
class NameLock {
 public:
  /// Fails when another process has the document open. Where no file can be made or locked there is no lock.
  static Result<NameLock> take(const QString& document);
  /// Whether a process has it, or had and was killed. Takes nothing, so that nobody is in anybody's way.
  [[nodiscard]] static bool mayBeHeld(const QString& document);
  NameLock() = default;
  ~NameLock() { release(); }
  NameLock(NameLock&& other) noexcept;
  NameLock& operator=(NameLock&& other) noexcept;

  [[nodiscard]] bool isHeld() const { return descriptor_ >= 0; }

 private:
  /// Whether the file that is held still lies at the path.
  [[nodiscard]] bool hasItsName() const;
  void release();

  int descriptor_ = -1;
  QByteArray path_;
};

/// Locks an open file against every other process: true when it is locked, false where that cannot be done.
/// Fails when another process has it.
[[nodiscard]] Result<bool> lockFile(int descriptor);

}  // namespace pendra
