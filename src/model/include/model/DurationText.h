#pragma once

#include <QString>

namespace pendra {

/// A length of time as "%02d:%02d:%02d": hours without a limit, minutes, seconds, each truncated toward
/// zero. A negative length carries its sign in its parts: -1800 is "00:-30:00".
QString durationText(double seconds);

}  // namespace pendra
