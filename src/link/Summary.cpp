#include "link/Summary.h"

#include <QHash>
#include <QLocale>

#include "link/MergedRecords.h"
#include "model/Activity.h"
#include "model/DurationText.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "store/ObjectContext.h"

namespace pendra {

namespace {

/// What the entries of one line have in common.
struct Group {
  SummaryLine line{};
  double seconds = 0;
  int entries = 0;
  std::optional<QDate> first{};
  std::optional<QDate> last{};

  void add(const TimeEntry& entry, const Calendar& calendar) {
    seconds += entry.storedDuration();
    if (++entries == 1)
      line.notes = entry.activity() ? entry.activity()->notes().value_or(QString()) : QString();
    if (!entry.start()) return;
    const QDate day = calendar.day(*entry.start());
    first = first ? std::min(*first, day) : day;
    last = last ? std::max(*last, day) : day;
  }
  [[nodiscard]] QString days() const {
    const QLocale locale;
    if (!first) return {};
    if (first == last) return locale.toString(*first, QStringLiteral("ddd d MMM"));
    const bool sameYear = first->year() == last->year();
    const bool sameMonth = sameYear && first->month() == last->month();
    const QString whole = sameYear ? QStringLiteral("d MMM") : QStringLiteral("d MMM yyyy");
    if (sameMonth) return locale.toString(*first, QStringLiteral("d")) + u'–' + locale.toString(*last, whole);
    return locale.toString(*first, whole) + u" – " + locale.toString(*last, whole);
  }
  [[nodiscard]] SummaryLine finished() const {
    SummaryLine whole = line;
    whole.days = days();
    if (entries != 1) whole.notes = counted(entries, "1 entry", "%Ln entries");
    whole.duration = durationText(seconds);
    return whole;
  }
};

std::vector<Group> groupsOf(const std::vector<SubmissionRow>& rows, const Calendar& calendar) {
  std::vector<Group> groups;
  QHash<QStringList, std::size_t> known;
  for (const SubmissionRow& row : rows) {
    if (!row.isUnsent()) continue;
    const QStringList names{row.customer, row.job, row.service};
    const auto found = known.constFind(names);
    const std::size_t at = found == known.constEnd() ? *known.insert(names, groups.size()) : *found;
    if (at == groups.size())
      groups.push_back({.line = {.customer = row.customer, .job = row.job, .service = row.service}});
    groups[at].add(*row.entry, calendar);
  }
  return groups;
}

SummaryLine sumOf(const std::vector<Group>& groups, qsizetype records) {
  double seconds = 0;
  int entries = 0;
  for (const Group& group : groups) {
    seconds += group.seconds;
    entries += group.entries;
  }
  return {.customer = tr("Sum"),
          .notes = counted(entries, "1 entry", "%Ln entries") + u", " +
                   counted(records, "1 record", "%Ln records"),
          .duration = durationText(seconds),
          .isSum = true};
}

/// How many unsent entries there are: of those that will be sent, of those that are listed, and of all.
struct Unsent {
  qsizetype considered;
  qsizetype listed;
  qsizetype all;

  [[nodiscard]] qsizetype notSelected() const { return listed - considered; }
  [[nodiscard]] qsizetype hidden() const { return all - listed; }
  [[nodiscard]] QString why() const {
    QStringList reasons;
    if (hidden() > 0)
      reasons << counted(hidden(), "1 is hidden by the filter", "%Ln are hidden by the filter");
    if (notSelected() > 0) reasons << counted(notSelected(), "1 is not selected", "%Ln are not selected");
    return reasons.join(u", ");
  }
  [[nodiscard]] QString leftOut() const {
    if (all == 0) return tr("Everything here has been sent.");
    if (considered == all) return {};
    if (considered > 0) {
      return counted(all, "%@ of 1 unsent entry; %@.", "%@ of %Ln unsent entries; %@.",
                     {QLocale().toString(considered), why()});
    }
    if (hidden() == all)
      return counted(all, "The only unsent entry is hidden by the filter.",
                     "All %Ln unsent entries are hidden by the filter.");
    return formatted(tr("Of the unsent entries %@."), {why()});
  }
};

qsizetype unsentIn(const std::vector<SubmissionRow>& rows) {
  return std::count_if(rows.begin(), rows.end(), [](const SubmissionRow& row) { return row.isUnsent(); });
}

}  // namespace

Summary summaryOf(const SubmissionRows& rows, const ObjectContext& context, const Calendar& calendar,
                  bool merging) {
  const auto considered = rows.consideredRows();
  const auto entries = context.all<TimeEntry>();
  const Unsent unsent{.considered = unsentIn(considered),
                      .listed = unsentIn(rows.allRows()),
                      .all = std::count_if(entries.begin(), entries.end(), [](const TimeEntry* entry) {
                        return entry->activity() && entry->sentSeconds() < 1.0;
                      })};
  Summary summary{.leftOut = unsent.leftOut(), .canShowAll = unsent.considered < unsent.all};
  const auto groups = groupsOf(considered, calendar);
  if (groups.empty()) return summary;
  for (const Group& group : groups) summary.lines.push_back(group.finished());
  const auto records = merging ? std::ssize(mergedRecords(considered, calendar)) : unsent.considered;
  summary.lines.push_back(sumOf(groups, records));
  return summary;
}

}  // namespace pendra
