#pragma once

#include <QDateTime>

#include "platform/Clock.h"
#include "support/Print.h"

namespace pendra {

/// The instant of an ISO text with a zone: instantOf("2026-11-24T09:00:00Z").
inline Instant instantOf(const char* text) {
  const auto milliseconds =
      QDateTime::fromString(QString::fromLatin1(text), Qt::ISODateWithMs).toMSecsSinceEpoch();
  return {static_cast<double>(milliseconds) / 1000 - kUnixToReference};
}

/// A clock that stands still until the test moves it, in either direction.
class ManualClock final : public Clock {
 public:
  explicit ManualClock(Instant now = instantOf("2026-11-24T09:00:00Z")) : now_(now) {}

  [[nodiscard]] Instant now() const override { return now_; }
  void set(Instant now) { now_ = now; }
  void set(const char* isoText) { now_ = instantOf(isoText); }
  void advance(double seconds) { now_ = now_ + seconds; }

 private:
  Instant now_;
};

}  // namespace pendra
