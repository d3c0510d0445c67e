#pragma once

#include <QByteArray>
#include <vector>

#include "channel/ArchiveValue.h"

namespace pendra::bench {

/// Writes a list of rows in one pass, every reference and offset four bytes wide. Nothing else can be
/// written.
QByteArray plainlyWritten(const ArchiveValue::Array& rows);

/// Reads a list of rows by following the references of an archive that must be good: nothing is checked.
std::vector<ListRow> plainlyRead(const QByteArray& archive);

}  // namespace pendra::bench
