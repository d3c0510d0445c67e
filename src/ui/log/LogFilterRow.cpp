#include "LogFilterRow.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "FilterPopUp.h"
#include "SignButton.h"
#include "platform/Preferences.h"
#include "ui/DateField.h"
#include "ui/Labels.h"
#include "ui/SearchField.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kWidestList = 480;
constexpr int kNarrowDate = 112;
constexpr int kWideDate = 116;
constexpr int kNarrowSearch = 90;
constexpr int kWideSearch = 152;
constexpr int kHeight = 44;
constexpr int kAroundWords = 6;  // in the controls at both ends

QStringList titlesOf(const QComboBox& popup) {
  QStringList titles;
  for (int index = 0; index < popup.count(); ++index) titles << popup.itemText(index);
  return titles;
}

}  // namespace

LogFilterRow::LogFilterRow(LogController& log, UserDefaults& defaults, std::function<void()> chosen,
                           QWidget* parent)
    : QWidget(parent), log_(log), chosen_(std::move(chosen)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  auto* line = new QWidget;
  line->setFixedHeight(kHeight);
  row_ = new QHBoxLayout(line);
  row_->setSpacing(metrics::kGrid);
  column->addWidget(line);
  addPopUp(tr("Customer"), QStringLiteral("customerPopup"), log.customerPopup)
      ->setAccessibleName(tr("Customer filter"));
  addPopUp(tr("Job"), QStringLiteral("jobPopup"), log.jobPopup)->setAccessibleName(tr("Job filter"));
  addPopUp(tr("Service"), QStringLiteral("servicePopup"), log.servicePopup)
      ->setAccessibleName(tr("Service filter"));
  addRange();
  addDateField(tr("From"), QStringLiteral("startDateField"), log.startDateField)
      ->setAccessibleName(tr("From date"));
  addDateField(tr("to"), QStringLiteral("endDateField"), log.endDateField)->setAccessibleName(tr("To date"));
  addClear();
  row_->addStretch(1);
  addSearch();
  addHideSubmitted(defaults);
  addComplaint(*column);
  filtersChanges_ = log.filtersChanges.observe([this] { showFilters(); });
  showFilters();
}

FilterPopUp* LogFilterRow::addPopUp(const QString& title, const QString& objectName, PopUp& popup) {
  auto* control = new FilterPopUp(title);
  control->setObjectName(objectName);
  control->setPlaceholderText(tr("All"));  // nothing chosen filters nothing
  connect(control, &QComboBox::activated, this, [this, &popup](int index) { choose(popup, index); });
  row_->addWidget(control);
  popups_.push_back({control, &popup});
  return control;
}

void LogFilterRow::addRange() {
  row_->addSpacing(metrics::kGrid);
  range_ = addPopUp({}, QStringLiteral("rangePopup"), log_.rangePopup);
  range_->setAccessibleName(tr("Range"));
  range_->setLimits([&log = log_] { return !log.startDateField.isEmpty() || !log.endDateField.isEmpty(); });
}

DateField* LogFilterRow::addDateField(const QString& title, const QString& objectName, QString& field) {
  auto* edit = new DateField;
  edit->setObjectName(objectName);
  edit->setFont(Theme::controlFont());
  edit->setMinimumWidth(Theme::wide(kNarrowDate));
  edit->setMaximumWidth(Theme::wide(kWideDate));
  edit->setPlaceholderText(tr("any day"));
  edit->setReader([this] { return log_.dayReader(); });
  connect(edit, &QLineEdit::editingFinished, this, [this, edit, &field] {
    edit->setModified(false);
    takeDate(edit->text(), field);
  });
  connect(edit, &DateField::unreadableChanged, this, &LogFilterRow::complain);
  row_->addWidget(makeLabel(title, {.font = Theme::controlFont(), .isQuiet = true, .of = edit}));
  row_->addWidget(edit, 2);
  dates_.push_back({edit, &field});
  return edit;
}

void LogFilterRow::addClear() {
  clear_ = new SignButton(Symbol::Cross);
  clear_->setObjectName(QStringLiteral("clearFilters"));
  clear_->setAccessibleName(tr("Clear Filters"));
  clear_->setToolTip(tr("Clear Filters"));
  row_->addWidget(clear_);
  connect(clear_, &QAbstractButton::clicked, this, [this] {
    log_.clearFilters();
    chosen_();
  });
}

void LogFilterRow::addSearch() {
  search_ = new SearchField(tr("Find in the log"));
  search_->setObjectName(QStringLiteral("logSearch"));
  search_->setFixedWidth(Theme::wide(kWideSearch));
  row_->addWidget(search_);
  connect(search_, &SearchField::entered, this, [this] { log_.prepareSearch(); });
  connect(search_, &QLineEdit::textChanged, this, &LogFilterRow::searchNow);
}

void LogFilterRow::searchNow() {
  log_.setSearch(search_->text());
  chosen_();
}

void LogFilterRow::addComplaint(QVBoxLayout& column) {
  complaint_ = new QWidget;
  complaint_->setObjectName(QStringLiteral("unreadableDate"));
  auto* words = new QLabel(tr("This date cannot be read and limits nothing."));
  words->setObjectName(QStringLiteral("unreadableDateText"));
  words->setFont(Theme::controlFont());
  auto* sign = new SignLabel(Symbol::Warning);
  auto* line = new QHBoxLayout(complaint_);
  line->setContentsMargins(metrics::kSide, 0, metrics::kSide, metrics::kGrid);
  line->setSpacing(metrics::kGrid);
  line->addWidget(sign);
  line->addWidget(words, 1);
  column.addWidget(complaint_);
  complaint_->hide();
}

void LogFilterRow::complain() {
  const auto isUnreadable = [](const ShownDate& date) { return date.control->isUnreadable(); };
  if (complaint_) complaint_->setVisible(std::any_of(dates_.begin(), dates_.end(), isUnreadable));
}

/// On a small window the search gives way first; then the layout shortens the values of the pop-ups.
void LogFilterRow::makeRoom() {
  int others = row_->contentsMargins().left() + row_->contentsMargins().right();
  for (int index = 0; index < row_->count(); ++index) {
    QLayoutItem& item = *row_->itemAt(index);
    if (!item.widget()) others += item.sizeHint().width();
    if (!item.widget() || item.isEmpty() || item.widget() == search_) continue;
    others += item.sizeHint().width() + row_->spacing();
  }
  search_->setFixedWidth(std::clamp(width() - others, Theme::wide(kNarrowSearch), Theme::wide(kWideSearch)));
}

void LogFilterRow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  makeRoom();
}

void LogFilterRow::addHideSubmitted(UserDefaults& defaults) {
  hideSubmitted_ = new QCheckBox(tr("Hide sent"));
  hideSubmitted_->setObjectName(QStringLiteral("hideSubmitted"));
  hideSubmitted_->setAccessibleName(tr("Hide sent"));
  hideSubmitted_->setFont(Theme::controlFont());
  hideSubmitted_->setChecked(log_.hidesSubmitted());
  row_->addWidget(hideSubmitted_);
  connect(hideSubmitted_, &QCheckBox::toggled, this, [this](bool checked) {
    log_.setHidesSubmitted(checked);
    chosen_();
  });
  hideChanges_ = defaults.changesOf(preferences::kHideSubmitted).observe([this] {
    const QSignalBlocker silent(hideSubmitted_);
    hideSubmitted_->setChecked(log_.hidesSubmitted());
  });
  for (Notifier* news : {&log_.session().standaloneChanges(), &log_.session().documentChanges()}) {
    applies_.push_back(news->observe([this] { showWhatApplies(); }));
  }
  showWhatApplies();
}

/// What is kept by hand is never sent. The words at both edges stand over the table's, wherever their
/// controls end.
void LogFilterRow::showWhatApplies() {
  const bool isLinked = !log_.session().isStandalone();
  hideSubmitted_->setVisible(isLinked);
  row_->setContentsMargins(metrics::kSide - kAroundWords, 0, metrics::kSide - (isLinked ? kAroundWords : 0),
                           0);
}

void LogFilterRow::choose(PopUp& popup, int index) {
  if (&popup == &log_.rangePopup) return chooseRange(static_cast<LogRange>(index));
  popup.selectAt(index);
  if (&popup == &log_.customerPopup) {
    log_.customerPicked(popup);
  } else {
    log_.rebuild();
  }
  chosen_();
}

void LogFilterRow::chooseRange(LogRange range) {
  log_.chooseRange(range);
  chosen_();
  if (range == LogRange::Dates) dates_.front().control->setFocus(Qt::OtherFocusReason);
}

void LogFilterRow::takeDate(const QString& text, QString& field) {
  if (text == field) return;
  field = text;
  log_.datesTyped();
  chosen_();
}

void LogFilterRow::showFilters() {
  for (const auto& [control, state] : popups_) {
    const QSignalBlocker silent(control);
    if (titlesOf(*control) != state->titles()) {
      control->clear();
      control->addItems(state->titles());
      const int widest = control->view()->sizeHintForColumn(0) + 2 * metrics::kGrid;
      control->view()->setMinimumWidth(std::min(widest, kWidestList));
    }
    control->setCurrentIndex(state->selectedIndex());
    control->updateGeometry();  // a value in bold is wider, too
  }
  for (const auto& [control, state] : dates_) {
    const bool isBeingTyped = control->hasFocus() && control->isModified();
    if (control->text() != *state && !isBeingTyped) control->setText(*state);
  }
  if (search_->text() != log_.search()) {
    const QSignalBlocker silent(search_);
    search_->setText(log_.search());
  }
  clear_->setVisible(log_.isLimited());
  range_->update();
  makeRoom();
}

}  // namespace pendra
