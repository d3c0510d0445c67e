#include "ui/SetupController.h"

#include <QButtonGroup>
#include <QCloseEvent>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>

#include "ui/Buttons.h"
#include "ui/HelpPlace.h"
#include "ui/Labels.h"
#include "ui/PathControl.h"
#include "ui/Theme.h"
#include "ui_core/HelpAnchors.h"
#include "ui_core/RunCommand.h"

namespace pendra {

namespace {

constexpr int kContentWidth = 520;
constexpr int kIndent = metrics::kGrid * 3;
/// From opening to the first question, in milliseconds: what is shown meanwhile is on the screen by then.
constexpr int kUntilQuestions = 50;

QLabel* words(const QString& text, const QString& name) {
  QLabel* label = makeLabel(text, {.objectName = name});
  // One line, as wide as there is room: what wraps would need a height that nobody knows beforehand.
  label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  return label;
}

QWidget* indented(QWidget* widget) {
  widget->setContentsMargins(kIndent, 0, 0, 0);
  return widget;
}

}  // namespace

SetupController::SetupController(const WindowFrame& frame, ConnectionChecks& checks, ListSync& lists)
    : AppWindow(frame, tr("Set Up Pendra")),
      session_(frame.session),
      flow_(frame.session, checks, lists, *this) {
  setObjectName(QStringLiteral("SetupController"));
  setHelpAnchor(*this, help::kSetup);
  content_ = makeContent();
  setContent(content_);
  flow_.showLooking();
  resize(minimumSizeHint());
  QTimer::singleShot(kUntilQuestions, this, [this] { lookForVantor(); });
}

QWidget* SetupController::makeContent() {
  auto* content = new QWidget;
  content->setFixedWidth(Theme::wide(kContentWidth));
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(metrics::kGrid * 4, metrics::kGrid * 3, metrics::kGrid * 4, metrics::kGrid * 3);
  column->setSpacing(0);
  modeRadios_ = new QButtonGroup(this);
  modeRadios_->setObjectName(QStringLiteral("standaloneRadioi"));
  const auto addMode = [&](int row, const QString& title, const QString& meaning) {
    auto* radio = new QRadioButton(title);
    radio->setChecked(row == 0);
    modeRadios_->addButton(radio, row);
    column->addWidget(radio);
    column->addSpacing(metrics::kGrid / 2);
    column->addWidget(indented(makeLabel(meaning, {.isQuiet = true, .wraps = true})));
  };
  addMode(
      0, tr("Link to Vantor"),
      tr("Customers, jobs and service items come from the company that is open in Vantor, and your time is "
         "sent to it."));
  linkSettings_ = makeSettings();
  column->addWidget(linkSettings_);
  column->addSpacing(metrics::kGrid * 3);
  addMode(1, tr("Work standalone"), tr("You keep the lists yourself. Your time stays in your document."));
  column->addWidget(makeStatus());
  column->addStretch();
  column->addWidget(makeButtons());
  connect(modeRadios_, &QButtonGroup::idToggled, this, [this](int, bool checked) {
    if (checked) flow_.modePicked();
  });
  return content;
}

QWidget* SetupController::makeSettings() {
  companyFile_ = new PathControl;
  companyFile_->setObjectName(QStringLiteral("myCompanyFile"));
  companyFile_->setAccessibleName(tr("Company file"));
  connect(companyFile_, &PathControl::pieceClicked, this,
          [this](const QString& path) { flow_.revealPiece(path); });
  noFileText_ = words({}, QStringLiteral("myNoFileOpenText"));
  notRunningText_ = words(tr("Vantor is not running."), QStringLiteral("NoneText"));
  lookAgain_ = new QPushButton(tr("Look Again"));
  lookAgain_->setAutoDefault(false);
  makeQuiet(*lookAgain_);
  connect(lookAgain_, &QPushButton::clicked, this, [this] { lookForVantor(); });
  employeePopup_ = new QComboBox;
  employeePopup_->setObjectName(QStringLiteral("myNamePopup"));
  employeePopup_->setAccessibleName(tr("Employee"));
  employeePopup_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);

  auto* settings = new QWidget;
  settings->setObjectName(QStringLiteral("vtSettingsView"));
  auto* form = new QFormLayout(settings);
  form->setContentsMargins(kIndent, metrics::kSide, 0, 0);
  form->setVerticalSpacing(metrics::kGrid);
  form->setLabelAlignment(Qt::AlignRight);
  auto* company = new QWidget;
  auto* row = new QVBoxLayout(company);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(metrics::kGrid / 2);
  for (QWidget* each : {static_cast<QWidget*>(notRunningText_), static_cast<QWidget*>(noFileText_),
                        static_cast<QWidget*>(companyFile_)}) {
    each->setMinimumHeight(metrics::kControlHeight);
    row->addWidget(each);
  }
  auto* again = new QHBoxLayout;
  again->setContentsMargins(-metrics::kGrid, 0, 0, 0);  // its words stand under those above
  again->addWidget(lookAgain_, 0, Qt::AlignLeft);
  row->addLayout(again);
  form->addRow(tr("Company file:"), company);
  form->addRow(tr("Employee:"), employeePopup_);
  return settings;
}

QWidget* SetupController::makeStatus() {
  statusSpinner_ = new QProgressBar;
  statusSpinner_->setObjectName(QStringLiteral("statusSpinner"));
  statusSpinner_->setRange(0, 0);
  statusSpinner_->setTextVisible(false);
  statusSpinner_->setFixedSize(96, metrics::kGrid);
  statusText_ = words(tr("Loading customers, jobs and service items…"), QStringLiteral("statusText"));
  statusText_->setForegroundRole(QPalette::PlaceholderText);
  auto* status = new QWidget;
  auto* row = new QHBoxLayout(status);
  row->setContentsMargins(0, metrics::kSide, 0, 0);
  row->addWidget(statusSpinner_);
  row->addWidget(statusText_, 1);
  return status;
}

QWidget* SetupController::makeButtons() {
  cancelButton_ = new QPushButton(tr("Cancel"));
  okButton_ = new QPushButton(tr("OK"));
  okButton_->setObjectName(QStringLiteral("okButton"));
  makePrimary(*okButton_);
  connect(cancelButton_, &QPushButton::clicked, this, [this] { flow_.cancel(); });
  connect(okButton_, &QPushButton::clicked, this, [this] { save(); });
  for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
    connect(new QShortcut(key, this), &QShortcut::activated, okButton_, &QPushButton::click);
  }
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, cancelButton_, &QPushButton::click);
  auto* buttons = new QWidget;
  auto* row = new QHBoxLayout(buttons);
  row->setContentsMargins(0, metrics::kGrid * 3, 0, 0);
  row->setSpacing(metrics::kGrid);
  row->addStretch();
  row->addWidget(cancelButton_);
  row->addWidget(okButton_);
  return buttons;
}

void SetupController::lookForVantor() {
  runCommand(session_, tr("Set Up Pendra"), [this] { flow_.start(); });
}

void SetupController::save() {
  const QPointer<SetupController> alive(this);
  saving_ = true;
  runCommand(session_, tr("Set Up Pendra"), [this] { flow_.save(); });
  if (alive) saving_ = false;
}

void SetupController::showDisplay(const SetupDisplay& display) {
  notRunningText_->setVisible(display.noneText);
  noFileText_->setVisible(display.noFileOpen);
  noFileText_->setText(display.noFileOpenText.isEmpty() ? tr("No company is open in Vantor.")
                                                        : display.noFileOpenText);
  noFileText_->setToolTip(display.noFileOpenText);
  companyFile_->setVisible(!display.noFileOpen);
  companyFile_->setPath(display.companyFile);
  lookAgain_->setVisible(display.canLookAgain);
  if (const QString chosen = selectedName(); display.employeeNames != employeeNames_) {
    employeeNames_ = display.employeeNames;
    employeePopup_->clear();
    employeePopup_->addItems(employeeNames_);
    employeePopup_->setCurrentText(chosen);
  }
  employeePopup_->setEnabled(display.linkedControls);
  okButton_->setEnabled(display.ok && !display.loading);
  cancelButton_->setEnabled(!display.loading);
  statusSpinner_->setVisible(display.loading);
  statusText_->setVisible(display.loading);
  linkSettings_->setVisible(display.settingsVisible);
  fitToContent();
}

/// The top edge stays; what the content needs more or less, the window is higher or lower.
void SetupController::fitToContent() {
  content_->layout()->activate();
  const int needed = content_->layout()->totalHeightForWidth(kContentWidth);
  const int change = needed - content_->minimumHeight();
  const int wanted = height() + change;  // before the layout makes room by itself
  content_->setMinimumHeight(needed);
  content_->parentWidget()->layout()->activate();
  layout()->activate();
  if (change != 0) resize(width(), wanted);
}

int SetupController::selectedRow() const { return modeRadios_->checkedId(); }

QString SetupController::selectedName() const { return employeePopup_->currentText(); }

void SetupController::closeUnasked() {
  isDone_ = true;
  if (!saving_) close();
}

void SetupController::finish() { close(); }

}  // namespace pendra
