#pragma once
// A report is a plain value made of a document, a query and a moment. Nothing in it follows the document:
// whoever shows one makes another when something has changed. Groups are told apart by their names, as people
// and the log's filters do it; a job by its customer's, too.

#include <vector>

#include "model/Activity.h"
#include "model/Hours.h"
#include "store/ObjectContext.h"

namespace pendra {

enum class RangeKind { Week, Month, Quarter, Year, Dates };

/// Days in a row, both included.
struct ReportRange {
  RangeKind kind = RangeKind::Month;
  QDate first{};
  QDate last{};

  /// The week, month, quarter or year in which a day lies; of `Dates` the day alone.
  [[nodiscard]] static ReportRange around(RangeKind kind, QDate day, Qt::DayOfWeek weekBegins);
  /// As many ranges of its kind later; `Dates` move by their own length.
  [[nodiscard]] ReportRange moved(int by) const;
  friend bool operator==(const ReportRange&, const ReportRange&) = default;
};

enum class BarUnit { Day, Week, Month };
enum class GroupBy { Customer, Job, Service };

struct ReportQuery {
  ReportRange range{};
  BarUnit bars = BarUnit::Day;
  GroupBy by = GroupBy::Customer;
  std::optional<QString> customer{};  ///< of this one alone
  Qt::DayOfWeek weekBegins = Qt::Monday;
};

/// What belongs to one customer, job or service; a name that an activity lacks is empty.
struct ReportGroup {
  GroupBy kind = GroupBy::Customer;
  QString name{};
  QString customer{};  ///< of a job at the top
  Hours hours{};
  std::vector<ReportGroup> groups{};        ///< the longest first; the last kind has none
  std::vector<Ref<Activity>> activities{};  ///< of the last kind
};

/// A group's share of a bar.
struct BarPart {
  std::size_t group;  ///< its place in the report
  Length sent{};
  Length notSent{};
};

struct ReportBar {
  QDate first{};
  QDate last{};
  Length sent{};
  Length notSent{};
  std::vector<BarPart> parts{};  ///< as the groups stand

  [[nodiscard]] Length total() const { return sent + notSent; }
};

struct Report {
  ReportQuery query{};
  std::vector<ReportBar> bars{};
  std::vector<ReportGroup> groups{};  ///< the longest first
  Hours all{};
};

/// The hours of every entry that began in the query's range.
[[nodiscard]] Report makeReport(const ObjectContext& context, const ReportQuery& query, Instant now);

/// An entry as the last kind of group lists it.
struct ReportEntry {
  Instant start{};
  QString notes{};
  Hours hours{};
};
/// Those of a group of the last kind, the latest first.
[[nodiscard]] std::vector<ReportEntry> entriesOf(const ReportGroup& group, const ReportQuery& query,
                                                 const Calendar& calendar, Instant now);

}  // namespace pendra
