#include "ui_core/CompletedActivities.h"

#include "model/ActivityTimes.h"
#include "model/Queries.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

std::optional<Instant> lastEntryOf(const Activity& activity) {
  std::optional<Instant> last;
  for (const TimeEntry* entry : activity.entries()) last = std::max(last, entry->start());
  return last;
}

std::vector<Column<CompletedRow>> columns(const Calendar& calendar, const QLocale& locale) {
  const auto name = [](const char* identifier, const QString& title, QString CompletedRow::*member) {
    return Column<CompletedRow>{
        .head = {.identifier = QString::fromLatin1(identifier), .title = title, .weight = 3},
        .text = [member](const CompletedRow& row) { return row.*member; }};
  };
  const auto day = [&calendar, locale](const CompletedRow& row) {
    return row.lastEntry ? locale.toString(calendar.day(*row.lastEntry), QLocale::ShortFormat) : QString();
  };
  const QString widestDay = locale.toString(QDate(2026, 12, 28), QLocale::ShortFormat);
  return {name("customer", tr("Customer"), &CompletedRow::customer),
          name("job", tr("Job"), &CompletedRow::job),
          name("service", tr("Service"), &CompletedRow::service),
          {.head = {.identifier = QStringLiteral("lastEntry"),
                    .title = tr("Last entry"),
                    .alignment = Alignment::Right,
                    .kind = CellKind::Moment,
                    .widest = {widestDay}},
           .text = day,
           .time = [](const CompletedRow& row) { return row.lastEntry; }},
          {.head = {.identifier = QStringLiteral("total"),
                    .title = tr("Total"),
                    .alignment = Alignment::Right,
                    .kind = CellKind::Time},
           .text = [](const CompletedRow& row) { return row.total; }}};
}

}  // namespace

CompletedActivities::CompletedActivities(Session& session, const QLocale& locale)
    : session_(session),
      table_(columns(session.ports().calendar, locale),
             {.identity =
                  [](const CompletedRow& row) {
                    return row.activity ? static_cast<quint64>(row.activity->objectID()) : 0;
                  }}),
      documentChanges_(session.documentChanges().observe([this] { followDocument(); })) {
  table_.sortBy({QStringLiteral("lastEntry"), false});
  followDocument();
}

void CompletedActivities::followDocument() {
  news_ = {};
  if (const auto context = session_.context()) {
    news_ = context->observe([this](const ChangeSet&) { list(); });
  }
  list();
}

void CompletedActivities::search(const QString& typed) {
  search_ = SearchText(typed);
  table_.setSearchText(search_);
  list();
}

void CompletedActivities::list() {
  std::vector<CompletedRow> rows;
  hasAny_ = false;
  const auto context = session_.context();
  const Today today(session_.ports().clock.now(), session_.ports().calendar);
  for (Activity* activity : context ? context->fetch<Activity>() : std::vector<Activity*>()) {
    if (activity->completed() == false) continue;
    hasAny_ = true;
    CompletedRow row{.activity = activity,
                     .customer = queries::nameOf(activity->customer()),
                     .job = queries::nameOf(activity->job()),
                     .service = queries::nameOf(activity->service()),
                     .lastEntry = {},
                     .total = {}};
    if (!search_.isIn({row.customer, row.job, row.service, activity->notes().value_or(QString())})) continue;
    row.lastEntry = lastEntryOf(*activity);
    row.total = timeTextsOf(*activity, today).total;
    rows.push_back(std::move(row));
  }
  table_.updateRows(std::move(rows));
}

void CompletedActivities::makeCurrent() {
  std::vector<Ref<Activity>> chosen;
  for (const int row : selection_.rows()) chosen.push_back(table_.row(row)->activity);
  if (chosen.empty() || !session_.context()) return;
  const QString name = chosen.size() == 1 ? tr("Make Activity Current")
                                          : counted(std::ssize(chosen), "Make Activity Current",
                                                    "Make %Ln Activities Current");
  std::ignore = session_.context()->edit(name, [&] {
    for (const Ref<Activity>& activity : chosen) activity->setCompleted(false);
  });
}

}  // namespace pendra
