#pragma once
// A sample is made of its options alone: the same options give the same objects in the same order, whatever
// the machine's date, zone and locale are.

#include <QDate>
#include <optional>

#include "platform/Clock.h"
#include "store/ObjectContext.h"

namespace pendra {

/// How much a sample holds. What is not given is filled in sensibly; what is given is met exactly.
struct SampleOptions {
  int customers = 12;
  std::optional<int> jobs{};  ///< else about two for each customer
  int services = 8;
  std::optional<int> activities{};  ///< the open ones; else 14, or none without customers
  std::optional<int> entries{};     ///< else 400, or none without activities
  QDate today{2026, 11, 24};        ///< the day of the last entries
  quint64 seed = 1;
  bool standalone = false;  ///< not linked to a company file
  bool everyday = false;    ///< names and notes without anything to stumble over
};

/// Stands still at noon of the sample's day; the context of a sample needs a clock.
class SampleClock final : public Clock {
 public:
  explicit SampleClock(QDate today);
  [[nodiscard]] Instant now() const override { return now_; }

 private:
  Instant now_;
};

/// Fills an empty context. Completed activities come on top of the open ones.
void fillSample(ObjectContext& context, const SampleOptions& options);

}  // namespace pendra
