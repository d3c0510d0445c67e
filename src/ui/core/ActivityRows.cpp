#include "ui_core/ActivityRows.h"

#include "link/AffectedActivities.h"
#include "model/Queries.h"
#include "model/TimeEntry.h"
#include "platform/Translation.h"
#include "store/ObjectContext.h"

namespace pendra {

namespace {

/// A column whose head has no words: its cells say what they do.
ColumnHead silent(ColumnHead head, const QString& accessibleName) {
  head.accessibleName = accessibleName;
  head.sortable = false;
  return head;
}

std::vector<Column<ActivityRow>> activityColumns() {
  const auto column = [](ColumnHead columnHead, QString ActivityRow::*member) {
    return Column<ActivityRow>{.head = std::move(columnHead),
                               .text = [member](const ActivityRow& row) { return row.*member; }};
  };
  const auto constant = [](ColumnHead columnHead, const QString& text) {
    return Column<ActivityRow>{.head = std::move(columnHead),
                               .text = [text](const ActivityRow&) { return text; }};
  };
  const auto startStop = [](const ActivityRow& row) { return row.running ? tr("Stop") : tr("Start"); };
  Column<ActivityRow> customer = column(
      columnHead(QStringLiteral("customer"), tr("Customer"), CellKind::Text, 4), &ActivityRow::customer);
  customer.warning = [](const ActivityRow& row) { return row.warning; };
  return {
      {.head = silent(columnHead(QStringLiteral("startstop"), {}, CellKind::StartStop, 0), tr("Start/Stop")),
       .text = startStop},
      {.head = silent(columnHead(QStringLiteral("favourite"), {}, CellKind::Star, 0), tr("Favourite")),
       .checked = [](const ActivityRow& row) { return row.favourite; }},
      std::move(customer),
      column(columnHead(QStringLiteral("job"), tr("Job"), CellKind::Text, 3), &ActivityRow::job),
      column(columnHead(QStringLiteral("service"), tr("Service"), CellKind::Text, 4), &ActivityRow::service),
      column(columnHead(QStringLiteral("notes"), tr("Notes"), CellKind::Secondary, 5), &ActivityRow::notes),
      constant(silent(columnHead(QStringLiteral("edit"), {}, CellKind::Link, 0), tr("Edit")), tr("Edit")),
      constant(silent(columnHead(QStringLiteral("complete"), {}, CellKind::Link, 0), tr("Complete")),
               tr("Activity Complete")),
      column(columnHead(QStringLiteral("today"), tr("Today"), CellKind::Time, 0), &ActivityRow::today),
      column(columnHead(QStringLiteral("total"), tr("Total"), CellKind::SecondaryTime, 0),
             &ActivityRow::total),
  };
}

RowTraits<ActivityRow> activityTraits() {
  return {
      .identity =
          [](const ActivityRow& row) {
            return row.activity ? static_cast<quint64>(row.activity->objectID()) : 0;
          },
      .running = [](const ActivityRow& row) { return row.running; },
      .first = [](const ActivityRow& row) { return row.favourite; },
      .group = [](const ActivityRow& row) { return row.favourite ? 1 : 0; },
      .groupedBy = {QString(), QStringLiteral("customer"), QStringLiteral("job"), QStringLiteral("service"),
                    QStringLiteral("notes"), QStringLiteral("today"), QStringLiteral("total")}};
}

/// The activities of which the edit changed an entry, and those that it changed themselves.
QSet<const Activity*> activitiesTouchedBy(const ChangeSet& changes) {
  QSet<const Activity*> touched;
  for (const Activity* activity : changes.changed<Activity>()) touched << activity;
  const auto add = [&](const Objects<TimeEntry>& entries) {
    for (const TimeEntry* entry : entries) {
      touched << entry->activity() << changes.targetBefore<Activity>(*entry, "activity");
    }
  };
  add(changes.inserted<TimeEntry>());
  add(changes.changed<TimeEntry>());
  add(changes.deleted<TimeEntry>());
  touched.remove(nullptr);
  return touched;
}

/// Whether the edit may have changed which activities are listed, or a name that any row shows.
bool concernsAllRows(const ChangeSet& changes) {
  return !changes.inserted<Activity>().empty() || !changes.deleted<Activity>().empty() ||
         changes.changedAny<Activity>("completed") || changes.changedAny<Activity>("favourite") ||
         changes.changedAny<Customer>("name") || changes.changedAny<Job>("name") ||
         changes.changedAny<Service>("name");
}

}  // namespace

ActivityRows::ActivityRows(const Session& session)
    : session_(session), table_(activityColumns(), activityTraits()) {}

Today ActivityRows::today() const { return Today(session_.ports().clock.now(), session_.ports().calendar); }

ActivityRow ActivityRows::rowFor(Activity& activity, const Today& today) {
  const TimeTexts times = timeTextsOf(activity, today);
  return {.activity = &activity,
          .customer = queries::nameOf(activity.customer()),
          .job = queries::nameOf(activity.job()),
          .service = queries::nameOf(activity.service()),
          .notes = activity.notes().value_or(QString()),
          .total = times.total,
          .today = times.today,
          .running = activity.isRunning(),
          .warning = lossText(activity),
          .favourite = activity.favourite() == true};
}

void ActivityRows::reload() {
  std::vector<ActivityRow> rows;
  if (const auto context = session_.context()) {
    const Today now = today();
    for (Activity* activity : queries::openActivities(*context)) rows.push_back(rowFor(*activity, now));
  }
  table_.updateRows(std::move(rows));
  findRunning();
}

void ActivityRows::follow(const ChangeSet& changes) {
  if (concernsAllRows(changes)) {
    reload();
  } else if (const auto touched = activitiesTouchedBy(changes); !touched.isEmpty()) {
    followRows(touched);
  }
}

/// A row stays where it stands while what arranges the rows does not change.
void ActivityRows::followRows(const QSet<const Activity*>& touched) {
  const Today now = today();
  table_.changeRows([&](ActivityRow& row) {
    if (!touched.contains(row.activity.get())) return false;
    row = rowFor(*row.activity, now);
    return true;
  });
  if (!search_.isEmpty()) lookThrough();
  findRunning();
}

bool ActivityRows::contains(const ActivityRow& row, const SearchText& text) {
  return text.isIn({row.customer, row.job, row.service, row.notes});
}

void ActivityRows::search(const QString& typed) {
  const SearchText text(typed);
  if (text.words() == search_.words()) return;
  search_ = text;
  table_.setSearchText(text);
  const Today now = today();
  table_.changeRows([&](ActivityRow& row) {  // those that were left out have run on
    if (row.running && row.activity) row = rowFor(*row.activity, now);
    return row.running;
  });
  lookThrough();
  findRunning();
}

void ActivityRows::lookThrough() {
  if (search_.isEmpty()) return table_.setFilter({});
  table_.setFilter([this](const ActivityRow& row) { return contains(row, search_); });
}

void ActivityRows::findRunning() {
  running_.clear();
  for (int row = 0; row < table_.rowCount(); ++row) {
    if (table_.row(row)->running) running_.emplace_back(table_.index(row, 0));
  }
}

void ActivityRows::updateRunning() {
  const Today now = today();
  for (const QPersistentModelIndex& index : running_) {
    const ActivityRow* old = table_.row(index.row());
    if (!old || !old->activity) continue;
    const TimeTexts times = timeTextsOf(*old->activity, now);
    ActivityRow row = *old;
    row.total = times.total;
    row.today = times.today;
    table_.replaceRow(index.row(), std::move(row));
  }
}

std::optional<int> ActivityRows::rowOf(const Activity* activity) const {
  if (!activity) return std::nullopt;
  return table_.indexOf([activity](const ActivityRow& row) { return row.activity == activity; });
}

}  // namespace pendra
