#include "link/PlainReason.h"

namespace pendra {

QString plainReason(const ChannelFailure& failure) {
  if (failure.name() == kVTIPCTimeout) return QStringLiteral("Vantor did not answer in time");
  if (failure.name() == kVTIPCSend) return QStringLiteral("Vantor could not be reached");
  if (failure.name() == kVTIPCUnArchiverFailure)
    return QStringLiteral("the answer of Vantor could not be read");
  if (failure.name() == kVTIPCNoMethod)
    return QStringLiteral("something else than an answer came from Vantor");
  if (failure.name() == kVTIPCCancelled) return QStringLiteral("it was cancelled");
  return failure.reason();
}

}  // namespace pendra
