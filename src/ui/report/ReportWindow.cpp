#include "ui/ReportWindow.h"

#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "HoursChart.h"
#include "ReadOut.h"
#include "ReportExports.h"
#include "ReportHead.h"
#include "ReportTable.h"
#include "model/Queries.h"
#include "platform/Preferences.h"
#include "ui/DisplayTick.h"
#include "ui/HelpPlace.h"
#include "ui/WindowPlace.h"
#include "ui_core/HelpAnchors.h"
#include "ui_core/ReportTexts.h"

namespace pendra {

namespace {

constexpr QSize kFirstSize{1120, 760};
constexpr int kTextMargin = 56;  // the read-out begins where the bars do

QWidget* onBase(QWidget* widget) {
  widget->setBackgroundRole(QPalette::Base);
  widget->setAutoFillBackground(true);
  return widget;
}

QWidget* line() {
  auto* line = new QWidget;
  line->setFixedHeight(1);
  line->setBackgroundRole(QPalette::Midlight);
  line->setAutoFillBackground(true);
  return line;
}

/// The customers for whom there is an activity.
QStringList customersIn(const ObjectContext& context) {
  QStringList names;
  for (const Customer* customer : context.all<Customer>()) {
    if (!customer->activities().empty()) names << queries::nameOf(customer);
  }
  names.removeAll(QString());
  names.removeDuplicates();
  queries::sortIgnoringCase(names);
  return names;
}

}  // namespace

ReportWindow::ReportWindow(const WindowFrame& frame, ShowInLog showInLog)
    : AppWindow(frame, tr("Report")),
      session_(frame.session),
      showInLog_(std::move(showInLog)),
      tree_(std::make_unique<ReportTree>(session_.ports().calendar, locale())) {
  setObjectName(QStringLiteral("reportWindow"));
  setHelpAnchor(*this, help::kReport);
  query_.weekBegins = weekBegins(session_.ports().defaults, locale());
  query_.range = ReportRange::around(RangeKind::Month, today(), query_.weekBegins);
  QWidget* content = makeContent();
  addExports();
  setContent(content);  // whose buttons get their letters by that
  resize(firstSize(*this, kFirstSize));
  new WindowPlace(*this, session_.ports().defaults, preferences::kReportPlace);
  connect(head_, &ReportHead::queryChosen, this, &ReportWindow::setQuery);
  connect(chart_, &HoursChart::questionChanged, this, &ReportWindow::showReadOut);
  connect(chart_, &HoursChart::barPressed, this, &ReportWindow::pressBar);
  observations_.push_back(session_.documentChanges().observe([this] { followDocument(); }));
  observations_.push_back(session_.standaloneChanges().observe([this] { refresh(); }));
  observations_.push_back(
      session_.ports().defaults.changesOf(preferences::kWeekBegins).observe([this] { beginWeeksAnew(); }));
  followDocument();
  new DisplayTick(session_, *this, [this] { tick(); });
  chart_->setFocus();
}

ReportWindow::~ReportWindow() {
  hide();  // the chart says that it loses the keyboard while there is a window to hear it
}

QWidget* ReportWindow::makeContent() {
  head_ = new ReportHead(
      [this] { return DayReader{.today = today(), .locale = locale(), .weekBegins = query_.weekBegins}; });
  readOut_ = new ReadOut;
  readOut_->setObjectName(QStringLiteral("readOut"));
  readOut_->setAccessibleName(tr("Read-out"));
  readOut_->setContentsMargins(kTextMargin, 0, metrics::kSide, 0);
  chart_ = new HoursChart;
  chart_->setObjectName(QStringLiteral("hoursChart"));
  chart_->setAccessibleName(tr("Hours"));
  table_ = new ReportTable(*tree_);
  table_->setObjectName(QStringLiteral("reportTable"));
  table_->setAccessibleName(tr("Hours by group"));

  auto* bars = onBase(new QWidget);
  auto* inBars = new QVBoxLayout(bars);
  inBars->setContentsMargins(0, metrics::kGrid, 0, metrics::kGrid);
  inBars->setSpacing(0);
  inBars->addWidget(readOut_);
  inBars->addWidget(chart_, 1);
  auto* rows = onBase(new QWidget);
  auto* inRows = new QVBoxLayout(rows);
  inRows->setContentsMargins(0, 0, 0, 0);
  inRows->setSpacing(0);
  inRows->addWidget(table_, 1);
  inRows->addWidget(new ReportSumRow(*table_));

  auto* content = new QWidget;
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(head_);
  column->addWidget(line());
  column->addWidget(bars, 2);
  column->addWidget(line());
  column->addWidget(rows, 3);
  return content;
}

void ReportWindow::addExports() {
  const auto add = [this](const QString& objectName, const QString& title, const std::function<void()>& act) {
    QPushButton* button = head_->addButton(objectName, title);
    connect(button, &QPushButton::clicked, this, [this, act] {
      if (context()) act();
    });
  };
  const auto shown = [this] { return paper(); };
  add(QStringLiteral("printReport"), tr("Print…"), [=, this] { printReport(session_, shown, *this); });
  add(QStringLiteral("saveReportPdf"), tr("Save PDF…"), [=, this] { savePdf(session_, shown); });
  add(QStringLiteral("saveReportCsv"), tr("Save CSV…"), [=, this] { saveCsv(session_, shown); });
}

ReportPaper ReportWindow::paper() const {
  return {.tree = *tree_,
          .rows = table_->shownRows(),
          .document = session_.document() ? session_.document()->displayName() : QString(),
          .locale = locale(),
          .today = today(),
          .linked = !session_.isStandalone()};
}

ObjectContext* ReportWindow::context() const { return session_.context().get(); }

QDate ReportWindow::today() const { return session_.ports().calendar.day(session_.ports().clock.now()); }

void ReportWindow::beginWeeksAnew() {
  ReportQuery query = query_;
  query.weekBegins = weekBegins(session_.ports().defaults, locale());
  if (query.range.kind == RangeKind::Week) {
    query.range = ReportRange::around(RangeKind::Week, query.range.first, query.weekBegins);
  }
  setQuery(query);
}

void ReportWindow::setQuery(const ReportQuery& query) {
  query_ = query;
  refresh();
}

void ReportWindow::followDocument() {
  news_ = {};
  if (context()) {
    news_ = context()->observe([this](const ChangeSet&) { refresh(); });
  } else {
    // A document that goes for a moment, to come back, keeps the window.
    QTimer::singleShot(0, this, [this] {
      if (!context()) close();
    });
  }
  query_.customer.reset();
  refresh();
}

void ReportWindow::refresh() {
  const Instant now = session_.ports().clock.now();
  const bool linked = !session_.isStandalone();
  Report report{.query = query_};
  if (context()) report = makeReport(*context(), query_, now);
  head_->showQuery(query_);
  head_->showCustomers(context() ? customersIn(*context()) : QStringList());
  head_->showSums(report.all, linked);
  chart_->setEmptyText(report.all.entries == 0 ? emptyText(query_.range, locale()) : QString());
  chart_->setReport(report, today(), linked);
  table_->setLinked(linked);
  tree_->setReport(std::move(report), [this, now](const ReportGroup& group) {
    return entriesOf(group, query_, session_.ports().calendar, now);
  });
}

/// While time runs in the range, its figures move.
void ReportWindow::tick() {
  if (!context() || !isVisible() || session_.ports().modals.isModal()) return;
  const Days days(query_.range.first, query_.range.last, session_.ports().calendar);
  const auto running = context()->flagged<TimeEntry>("running");
  if (std::any_of(running.begin(), running.end(),
                  [&](const TimeEntry* entry) { return days.contain(entry->start()); })) {
    refresh();
  }
}

void ReportWindow::showReadOut() {
  const int bar = chart_->barInQuestion();
  const Report& report = chart_->report();
  readOut_->show(bar < 0 ? legendOf(report) : readOutOf(report, bar, locale(), !session_.isStandalone()));
}

void ReportWindow::pressBar(int bar) {
  const ReportBar& pressed = chart_->report().bars.at(static_cast<std::size_t>(bar));
  showInLog_(pressed.first, pressed.last, query_.customer);
}

}  // namespace pendra
