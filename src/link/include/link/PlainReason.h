#pragma once

#include "channel/ChannelFailure.h"

namespace pendra {

/// Why a call of Vantor failed, as half a sentence for a person who knows nothing of channels. What a call
/// does not fail with by itself says its own reason.
[[nodiscard]] QString plainReason(const ChannelFailure& failure);

}  // namespace pendra
