#pragma once

#include <QString>

#include "channel/Descriptor.h"
#include "platform/Result.h"

namespace pendra {

/// The time records that were sent, one JSON object a line. A record is on the disk when `append` returns.
class RecordsFile {
 public:
  /// An empty path keeps no records.
  static Result<RecordsFile> open(const QString& path);
  void append(const QString& text);

 private:
  Descriptor file_;
};

}  // namespace pendra
