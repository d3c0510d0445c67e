#pragma once
// The two tables of the timer window stand on one grid, so that a name is looked for in one place, whichever
// table it is in. These are the figures of it, and the only ones.

#include <QStringView>
#include <array>
#include <optional>

namespace pendra::grid {

/// The columns that have a place of their own, from the left. Notes take what those behind them leave.
enum class Place { Sign, Star, Customer, Job, Service, Notes };

/// A table of this width and more has the wide places.
inline constexpr int kWideFrom = 1100;
/// Where the words of each column begin.
inline constexpr std::array kWide{16, 40, 60, 224, 332, 456};
inline constexpr std::array kNarrow{16, 40, 60, 204, 288, 396};

/// A star stands close to the sign before it.
inline constexpr int kBeforeStar = 4;

[[nodiscard]] constexpr int startOf(Place place, int tableWidth) {
  return (tableWidth >= kWideFrom ? kWide : kNarrow)[static_cast<std::size_t>(place)];
}

/// The place of a column; none for one that is as wide as its content.
[[nodiscard]] inline std::optional<Place> placeOf(QStringView column) {
  constexpr std::array<std::pair<QStringView, Place>, 7> kPlaces{{{u"startstop", Place::Sign},
                                                                  {u"state", Place::Sign},
                                                                  {u"favourite", Place::Star},
                                                                  {u"customer", Place::Customer},
                                                                  {u"job", Place::Job},
                                                                  {u"service", Place::Service},
                                                                  {u"notes", Place::Notes}}};
  for (const auto& [identifier, place] : kPlaces) {
    if (identifier == column) return place;
  }
  return std::nullopt;
}

}  // namespace pendra::grid
