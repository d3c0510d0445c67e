#pragma once
// Reads what may come from anybody: every offset, count and reference is checked before it is followed, and
// all of it before anything is built.

#include <QByteArrayView>

#include "IPC/ArchiveValue.h"
#include "IPC/SupportedClasses.h"
#include "platform/Result.h"

namespace pendra {

/// A value that was read and the memory that it holds, in bytes, rounded up.
struct Unarchived {
  ArchiveValue value;
  qsizetype memory = 0;
};

/// What reading one archive may hold at once, tables and result together, unless told otherwise.
inline constexpr qsizetype kUnarchiverMemory = qsizetype{44} << 20;

/// Reads a keyed archive, whatever the order and sharing of its objects, in linear time. Fails, in the domain
/// "archive", on anything that is not of the layout, on a class outside of `classes` anywhere in it, on a
/// cycle, a depth over `kArchiveDepth`, and when more than `memoryLimit` bytes would be needed.
Result<Unarchived> unarchivedValue(QByteArrayView archive, const SupportedClasses& classes,
                                   qsizetype memoryLimit = kUnarchiverMemory);

}  // namespace pendra
