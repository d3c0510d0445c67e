// Reads any bytes as an archive. What can be read can be written, and reads again as the same value.
#include <cstdint>
#include <cstdlib>

#include "channel/Archive.h"

namespace {

/// How many values a tree spells out, up to a limit: an archive may share so much that no tree can be
/// written.
int spelledOut(const pendra::ArchiveValue& value, int limit) {
  int count = 1;
  if (const auto* array = value.as<pendra::ArchiveValue::Array>())
    for (const auto& part : *array)
      if (count < limit) count += spelledOut(part, limit - count);
  return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(data, static_cast<qsizetype>(size));
  const auto read = pendra::readArchive(bytes);
  if (!read || spelledOut(read.value(), 100000) >= 100000) return 0;
  const auto written = pendra::writeArchive(read.value());
  if (!written) std::abort();
  const auto again = pendra::readArchive(written.value());
  if (!again) std::abort();
  // A number that is not one differs from itself, so the archives are compared.
  if (pendra::writeArchive(again.value()).value() != written.value()) std::abort();
  return 0;
}
