#pragma once
// Every message is a keyed archive in a binary property list. What is read may come from anybody: every
// offset, count and reference is checked before it is followed, and all of it before anything is built.

#include <QByteArray>

#include "channel/ArchiveValue.h"
#include "platform/Result.h"

namespace pendra {

/// How many arrays and rows may stand within each other, in an archive that is written or read.
inline constexpr int kArchiveDepth = 64;

/// What reading one archive may hold at once, tables and result together, in bytes.
inline constexpr qsizetype kArchiveMemory = qsizetype{44} << 20;

/// Writes an archive, in time and memory linear in what it holds. Equal texts and equal numbers stand once.
/// Fails on a value that is nested more than `kArchiveDepth` deep. The archive is never an exact multiple of
/// `kSliceSize` long.
Result<QByteArray> writeArchive(const ArchiveValue& root);

/// Reads an archive, whatever the order and sharing of its objects, in linear time. Fails, in the domain
/// "archive", on anything that is not of the layout, on a class that cannot travel anywhere in it, on a
/// cycle, a depth over `kArchiveDepth`, and when more than `kArchiveMemory` would be needed.
Result<ArchiveValue> readArchive(QByteArrayView archive);

}  // namespace pendra
