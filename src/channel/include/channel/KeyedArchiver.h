#pragma once

#include <QByteArray>

#include "channel/ArchiveValue.h"
#include "platform/Result.h"

namespace pendra {

/// How many arrays and records may stand within each other, in an archive that is written or read.
inline constexpr int kArchiveDepth = 64;

/// Writes a keyed archive of `root`, in time and memory linear in what it holds. Equal texts and equal
/// numbers stand once. Fails on a value that is nested more than `kArchiveDepth` deep, and on a record
/// whose fields do not match its class.
Result<QByteArray> archivedData(const ArchiveValue& root);

}  // namespace pendra
