#include "LogFilterRow.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>

#include "FilterPopUp.h"
#include "platform/Preferences.h"
#include "ui/DateField.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kWidestList = 480;
constexpr int kNarrowDate = 76;
constexpr int kWideDate = 116;
constexpr int kHeight = 44;

QStringList titlesOf(const QComboBox& popup) {
  QStringList titles;
  for (int index = 0; index < popup.count(); ++index) titles << popup.itemText(index);
  return titles;
}

QLabel* quietLabel(const QString& text, QWidget* of) {
  auto* label = new QLabel(text);
  label->setFont(Theme::controlFont());
  label->setForegroundRole(QPalette::PlaceholderText);
  label->setBuddy(of);
  return label;
}

}  // namespace

LogFilterRow::LogFilterRow(LogController& log, UserDefaults& defaults, std::function<void()> chosen,
                           QWidget* parent)
    : QWidget(parent), log_(log), chosen_(std::move(chosen)), row_(new QHBoxLayout(this)) {
  setFixedHeight(kHeight);
  row_->setContentsMargins(metrics::kSide - 6, 0, metrics::kSide, 0);  // the words at the left edge
  row_->setSpacing(metrics::kGrid);
  addPopUp(tr("Customer"), QStringLiteral("customerPopup"), log.customerPopup)
      ->setAccessibleName(tr("Customer filter"));
  addPopUp(tr("Job"), QStringLiteral("jobPopup"), log.jobPopup)->setAccessibleName(tr("Job filter"));
  addPopUp(tr("Service"), QStringLiteral("servicePopup"), log.servicePopup)
      ->setAccessibleName(tr("Service filter"));
  addDateField(tr("From"), QStringLiteral("startDateField"), log.startDateField)
      ->setAccessibleName(tr("From date"));
  addDateField(tr("to"), QStringLiteral("endDateField"), log.endDateField)->setAccessibleName(tr("To date"));
  row_->addStretch(1);
  addHideSubmitted(defaults);
  filtersChanges_ = log.filtersChanges.observe([this] { showFilters(); });
  showFilters();
}

QComboBox* LogFilterRow::addPopUp(const QString& title, const QString& objectName, PopUp& popup) {
  auto* control = new FilterPopUp(title);
  control->setObjectName(objectName);
  control->setPlaceholderText(tr("All"));  // nothing chosen filters nothing
  connect(control, &QComboBox::activated, this, [this, &popup](int index) { choose(popup, index); });
  row_->addWidget(control);
  popups_.push_back({control, &popup});
  return control;
}

DateField* LogFilterRow::addDateField(const QString& title, const QString& objectName, QString& field) {
  auto* edit = new DateField;
  edit->setObjectName(objectName);
  edit->setFont(Theme::controlFont());
  edit->setMinimumWidth(kNarrowDate);
  edit->setMaximumWidth(kWideDate);
  edit->setPlaceholderText(tr("any day"));
  edit->setReader([this](const QString& text) { return log_.isReadable(text); });
  connect(edit, &QLineEdit::editingFinished, this, [this, edit, &field] {
    edit->setModified(false);
    takeDate(edit->text(), field);
  });
  row_->addWidget(quietLabel(title, edit));
  row_->addWidget(edit, 2);
  dates_.push_back({edit, &field});
  return edit;
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
    log_.updateRunningEntries();
    chosen_();
  });
  hideChanges_ = defaults.changesOf(preferences::kHideSubmitted).observe([this] {
    const QSignalBlocker silent(hideSubmitted_);
    hideSubmitted_->setChecked(log_.hidesSubmitted());
  });
}

void LogFilterRow::choose(PopUp& popup, int index) {
  popup.selectItemAtIndex(index);
  if (&popup == &log_.customerPopup) {
    log_.customerPicked(popup);
  } else {
    log_.reloadData();
  }
  log_.updateRunningEntries();  // at once, not at the next tick
  chosen_();
}

void LogFilterRow::takeDate(const QString& text, QString& field) {
  if (text == field) return;
  field = text;
  log_.reloadData();
  log_.updateRunningEntries();
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
    control->setCurrentIndex(state->indexOfSelectedItem());
  }
  for (const auto& [control, state] : dates_) {
    const bool isBeingTyped = control->hasFocus() && control->isModified();
    if (control->text() != *state && !isBeingTyped) control->setText(*state);
  }
}

}  // namespace pendra
