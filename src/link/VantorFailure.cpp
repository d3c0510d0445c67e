#include "link/VantorFailure.h"

#include "channel/ChannelFailure.h"
#include "platform/Translation.h"

namespace pendra {

bool VantorFailure::wasCancelled() const { return name_ == kVTIPCCancelled; }

QString VantorFailure::plainReason() const {
  if (name_ == kVTIPCTimeout) return tr("Vantor did not answer in time");
  if (name_ == kVTIPCSend) return tr("Vantor could not be reached");
  if (name_ == kVTIPCUnArchiverFailure) return tr("the answer of Vantor could not be read");
  if (name_ == kVTIPCNoMethod) return tr("something else than an answer came from Vantor");
  if (wasCancelled()) return tr("it was cancelled");
  return reason_;
}

}  // namespace pendra
