#include "model/Overlaps.h"

#include <algorithm>

#include "model/TimeEntry.h"
#include "store/ObjectContext.h"

namespace pendra {

namespace {

struct Span {
  Instant from;
  Instant to;
};

/// Of spans in the order of their beginnings, what is in any of them.
double lengthOfAll(const std::vector<Span>& spans) {
  double length = 0;
  Instant reached = spans.empty() ? Instant{} : spans.front().from;
  for (const Span& span : spans) {
    length += std::max(0.0, span.to - std::max(span.from, reached));
    reached = std::max(reached, span.to);
  }
  return length;
}

}  // namespace

Overlaps overlapsWith(const ObjectContext& context, Instant from, Instant to, const TimeEntry* except) {
  constexpr double kWorthAWord = 1;
  Overlaps overlaps;
  std::vector<Span> spans;
  for (TimeEntry* entry : context.all<TimeEntry>()) {
    if (entry == except || !entry->start() || !entry->activity()) continue;
    const Span shared{std::max(from, *entry->start()), std::min(to, entry->end())};
    if (shared.to - shared.from < kWorthAWord) continue;
    overlaps.parts.push_back({entry, shared.to - shared.from});
    spans.push_back(shared);
  }
  std::stable_sort(overlaps.parts.begin(), overlaps.parts.end(),
                   [](const auto& one, const auto& other) { return one.seconds > other.seconds; });
  std::sort(spans.begin(), spans.end(), [](const Span& a, const Span& b) { return a.from < b.from; });
  overlaps.seconds = lengthOfAll(spans);
  return overlaps;
}

}  // namespace pendra
