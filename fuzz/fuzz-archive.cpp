// Reads any bytes as an archive. What can be read can be written, and reads again as the same value.
#include <cstdint>
#include <cstdlib>

#include "channel/KeyedArchiver.h"
#include "channel/KeyedUnarchiver.h"
#include "channel/PDToVTProtocol.h"

namespace {

/// How many values a tree spells out, up to a limit: an archive may share so much that no tree can be
/// written.
int spelledOut(const pendra::ArchiveValue& value, int limit) {
  int count = 1;
  const auto add = [&](const auto& parts) {
    for (const auto& part : parts)
      if (count < limit) count += spelledOut(part, limit - count);
  };
  if (const auto* array = value.as<pendra::ArchiveValue::Array>()) add(*array);
  if (const auto* record = value.as<pendra::ArchiveRecord>()) add(record->fields);
  return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto classes = pendra::supportedClassesOfPDToVT();
  const QByteArrayView bytes(data, static_cast<qsizetype>(size));
  const auto read = pendra::unarchivedValue(bytes, classes);
  if (!read || spelledOut(read.value(), 100000) >= 100000) return 0;
  const auto written = pendra::archivedData(read.value());
  if (!written) std::abort();
  const auto again = pendra::unarchivedValue(written.value(), classes);
  if (!again) std::abort();
  // A number that is not one differs from itself, so the archives are compared.
  if (pendra::archivedData(again.value()).value() != written.value()) std::abort();
  return 0;
}
