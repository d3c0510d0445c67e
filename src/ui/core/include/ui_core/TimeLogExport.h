#pragma once
// The file is for other programs: its layout is fixed to the byte, nothing in a field is escaped, and it is
// written in place, so that a file in a folder that cannot be written to can still be replaced.

#include <QString>
#include <cstddef>

#include "platform/Result.h"

namespace pendra {

class LogController;
class ObjectContext;

/// Watches an export, and shows itself when that takes long.
class ExportProgress {
 public:
  virtual ~ExportProgress() = default;
  /// Called every few hundred rows; false ends the export.
  virtual bool goOn(std::size_t done, std::size_t of) = 0;
};

/// Asks for a file, has all timers stopped, and writes the log's selected rows, or all when none is
/// selected. A file that cannot be written is said in a notice, without an alert; of an export that was
/// ended no file stays.
void exportTimeLog(LogController& log, ExportProgress& progress);

/// Writes every entry of a document to a new file; how many they are. What runs has no length in it.
[[nodiscard]] Result<std::size_t> exportAll(const ObjectContext& context, const QString& path);

}  // namespace pendra
