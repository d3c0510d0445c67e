#include "ReportHead.h"

#include <QAbstractItemView>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>

#include "../log/FilterPopUp.h"
#include "ui/DateField.h"
#include "ui/Labels.h"
#include "ui/Theme.h"
#include "ui_core/ReportTexts.h"

namespace pendra {

namespace {

constexpr int kDateWidth = 112;
constexpr double kSumOfAll = 24;  // points
constexpr double kOtherSums = 15;

QFont figuresOf(double points, QFont::Weight weight) {
  QFont font = Theme::sized(points);
  font.setWeight(weight);
  return font;
}

QHBoxLayout* rowIn(QWidget* widget) {
  auto* row = new QHBoxLayout(widget);
  row->setContentsMargins(metrics::kSide, 0, metrics::kSide, 0);
  row->setSpacing(metrics::kGrid);
  return row;
}

/// The bars that show a range best.
BarUnit barsFor(const ReportRange& range) {
  const qint64 days = range.first.daysTo(range.last) + 1;
  return days <= 31 ? BarUnit::Day : days <= 92 ? BarUnit::Week : BarUnit::Month;
}

}  // namespace

ReportHead::ReportHead(std::function<DayReader()> days) : days_(std::move(days)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, metrics::kGrid + 4, 0, metrics::kGrid + 4);
  column->setSpacing(metrics::kGrid + 4);
  column->addWidget(makeRangeRow());
  column->addWidget(makeSumsRow());
}

QWidget* ReportHead::makeRangeRow() {
  auto* widget = new QWidget;
  rangeRow_ = rowIn(widget);
  addStep(*rangeRow_, QStringLiteral("previousRange"), tr("Previous range"), -1);
  addStep(*rangeRow_, QStringLiteral("nextRange"), tr("Next range"), 1);
  title_ = new QLabel;
  title_->setObjectName(QStringLiteral("rangeTitle"));
  title_->setAccessibleName(tr("Range"));
  title_->setFont(figuresOf(kOtherSums, QFont::DemiBold));
  title_->setContentsMargins(0, 0, metrics::kGrid, 0);
  rangeRow_->addWidget(title_);
  addRanges(*rangeRow_);
  addDates(*rangeRow_);
  rangeRow_->addStretch(1);
  return widget;
}

QPushButton* ReportHead::addStep(QHBoxLayout& row, const QString& objectName, const QString& name, int by) {
  auto* button = new StepButton(by < 0 ? Qt::LeftArrow : Qt::RightArrow);
  button->setObjectName(objectName);
  button->setAccessibleName(name);
  const QKeySequence key(by < 0 ? Qt::ALT | Qt::Key_Left : Qt::ALT | Qt::Key_Right);
  button->setToolTip(name + u" (" + key.toString(QKeySequence::NativeText) + u')');
  const auto step = [this, by] {
    ReportQuery query = query_;
    query.range = query.range.moved(by);
    choose(query);
  };
  connect(button, &QPushButton::clicked, this, step);
  // At once: by Qt's own way a button's key waits for a tenth of a second, and the next press goes astray.
  connect(new QShortcut(key, this), &QShortcut::activated, this, step);
  row.addWidget(button);
  return button;
}

void ReportHead::addRanges(QHBoxLayout& row) {
  using Place = SegmentButton::Place;
  const std::array titles{tr("Week"), tr("Month"), tr("Quarter"), tr("Year"), tr("Dates…")};
  const std::array names{"weekRange", "monthRange", "quarterRange", "yearRange", "datesRange"};
  auto* segments = new QWidget;
  auto* inRow = new QHBoxLayout(segments);
  inRow->setContentsMargins(0, 0, 0, 0);
  inRow->setSpacing(0);
  auto* group = new QButtonGroup(this);
  for (std::size_t at = 0; at < kinds_.size(); ++at) {
    const Place place = at == 0 ? Place::First : at + 1 == kinds_.size() ? Place::Last : Place::Middle;
    kinds_[at] = new SegmentButton(titles[at], place);
    kinds_[at]->setObjectName(QString::fromLatin1(names[at]));
    group->addButton(kinds_[at]);
    inRow->addWidget(kinds_[at]);
    connect(kinds_[at], &QRadioButton::toggled, this, [this, at](bool on) {
      if (on) chooseKind(static_cast<RangeKind>(at));
    });
  }
  row.addWidget(segments);
}

void ReportHead::addDates(QHBoxLayout& row) {
  dates_ = new QWidget;
  auto* inRow = rowIn(dates_);
  inRow->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const QString& objectName, const QString& name) {
    auto* field = new DateField;
    field->setObjectName(objectName);
    field->setAccessibleName(name);
    field->setFixedWidth(Theme::wide(kDateWidth));
    field->setReader(days_);
    connect(field, &QLineEdit::editingFinished, this, &ReportHead::chooseDates);
    inRow->addWidget(field);
    return field;
  };
  // No "from" before them: with the buttons at the right the row must have room on a screen of 1024 points.
  from_ = add(QStringLiteral("reportFrom"), tr("From date"));
  auto* word = makeLabel(tr("to"), {.isQuiet = true});
  inRow->addWidget(word);
  to_ = add(QStringLiteral("reportTo"), tr("To date"));
  word->setBuddy(to_);
  row.addWidget(dates_);
}

QWidget* ReportHead::makeSumsRow() {
  auto* widget = new QWidget;
  QHBoxLayout* row = rowIn(widget);
  using Sign = ReportSum::Sign;
  const QFont other = figuresOf(kOtherSums, QFont::Normal);
  all_ = new ReportSum(QStringLiteral("allSum"), tr("All hours"), figuresOf(kSumOfAll, QFont::DemiBold),
                       Sign::None);
  sent_ = new ReportSum(QStringLiteral("sentSum"), tr("Sent"), other, Sign::Solid);
  notSent_ = new ReportSum(QStringLiteral("unsentSum"), tr("Not sent"), other, Sign::Hatched);
  billable_ = new ReportSum(QStringLiteral("billableSum"), tr("Billable"), other, Sign::None);
  for (ReportSum* sum : {all_, sent_, notSent_, billable_}) {
    row->addWidget(sum);
  }
  ReportSum::alignBaseLines({all_, sent_, notSent_, billable_});
  row->addStretch(1);
  auto* popups = new QHBoxLayout;
  popups->setSpacing(metrics::kGrid);
  row->addLayout(popups);
  row->setAlignment(popups, Qt::AlignBottom);
  bars_ = addPopUp(*popups, QStringLiteral("barsPopup"), tr("Bars by"),
                   new FilterPopUp(tr("Bars by"), FilterPopUp::Purpose::Chooses));
  bars_->addItems({tr("day"), tr("week"), tr("month")});
  by_ = addPopUp(*popups, QStringLiteral("stackedPopup"), tr("Stacked by"),
                 new FilterPopUp(tr("stacked by"), FilterPopUp::Purpose::Chooses));
  by_->addItems({tr("customer"), tr("job"), tr("service")});
  customer_ = addPopUp(*popups, QStringLiteral("reportCustomerPopup"), tr("Customer filter"),
                       new FilterPopUp(tr("Customer")));
  customer_->addItem(tr("All"));
  connect(bars_, &QComboBox::activated, this, [this](int index) {
    ReportQuery query = query_;
    query.bars = static_cast<BarUnit>(index);
    choose(query);
  });
  connect(by_, &QComboBox::activated, this, [this](int index) {
    ReportQuery query = query_;
    query.by = static_cast<GroupBy>(index);
    choose(query);
  });
  connect(customer_, &QComboBox::activated, this, [this](int index) {
    ReportQuery query = query_;
    query.customer = index > 0 ? std::optional(customer_->itemText(index)) : std::nullopt;
    choose(query);
  });
  return widget;
}

FilterPopUp* ReportHead::addPopUp(QHBoxLayout& row, const QString& objectName, const QString& name,
                                  FilterPopUp* popup) {
  popup->setObjectName(objectName);
  popup->setAccessibleName(name);
  row.addWidget(popup);
  return popup;
}

QPushButton* ReportHead::addButton(const QString& objectName, const QString& title) {
  auto* button = new QPushButton(title);
  button->setObjectName(objectName);
  button->setAccessibleName(title);
  rangeRow_->addWidget(button);
  return button;
}

void ReportHead::showQuery(const ReportQuery& query) {
  query_ = query;
  title_->setText(titleOf(query.range, locale()));
  title_->setAccessibleDescription(title_->text());
  for (std::size_t at = 0; at < kinds_.size(); ++at) {
    const QSignalBlocker silent(kinds_[at]);
    kinds_[at]->setChecked(static_cast<std::size_t>(query.range.kind) == at);
  }
  // Dates that were typed are their own title. One goes before the other comes: the window would grow to hold
  // both, and stay that wide.
  const bool isTyped = query.range.kind == RangeKind::Dates;
  (isTyped ? title_ : dates_)->hide();
  (isTyped ? dates_ : title_)->show();
  for (const auto& [field, date] : {std::pair(from_, query.range.first), std::pair(to_, query.range.last)}) {
    field->setText(fieldDate(date, locale()));
  }
  bars_->setCurrentIndex(static_cast<int>(query.bars));
  by_->setCurrentIndex(static_cast<int>(query.by));
}

void ReportHead::showCustomers(const QStringList& names) {
  QStringList titles = names;
  if (query_.customer && !titles.contains(*query_.customer)) titles << *query_.customer;
  titles.prepend(tr("All"));
  QStringList before;
  for (int at = 0; at < customer_->count(); ++at) before << customer_->itemText(at);
  if (titles != before) {
    customer_->clear();
    customer_->addItems(titles);
    customer_->view()->setMinimumWidth(customer_->view()->sizeHintForColumn(0) + 2 * metrics::kGrid);
  }
  customer_->setCurrentIndex(query_.customer ? static_cast<int>(titles.lastIndexOf(*query_.customer)) : 0);
}

void ReportHead::showSums(const Hours& all, bool linked) {
  all_->show(all.total);
  sent_->show(all.sent);
  notSent_->show(all.notSent());
  billable_->show(all.billable);
  sent_->setVisible(linked);
  notSent_->setVisible(linked);
}

void ReportHead::chooseKind(RangeKind kind) {
  ReportQuery query = query_;
  // Today's range when today is in what was shown, else the one at its beginning.
  const QDate today = days_().today;
  const bool hasToday = query.range.first <= today && today <= query.range.last;
  const QDate day = hasToday ? today : query.range.first;
  query.range = kind == RangeKind::Dates ? ReportRange{kind, query.range.first, query.range.last}
                                         : ReportRange::around(kind, day, query.weekBegins);
  query.bars = barsFor(query.range);
  choose(query);
  if (kind == RangeKind::Dates) from_->setFocus();
}

void ReportHead::chooseDates() {
  const auto first = readDateField(from_->text(), days_());
  const auto last = readDateField(to_->text(), days_());
  if (!first || !last) return;
  ReportQuery query = query_;
  query.range = {RangeKind::Dates, std::min(first->first, last->first), std::max(first->last, last->last)};
  if (query.range == query_.range) return;
  query.bars = barsFor(query.range);
  choose(query);
}

void ReportHead::choose(const ReportQuery& query) { Q_EMIT queryChosen(query); }

}  // namespace pendra
