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
#include "ui/PathControl.h"
#include "ui/Theme.h"
#include "ui_core/RunCommand.h"

namespace pendra {

namespace {

constexpr int kContentWidth = 520;
constexpr int kIndent = metrics::kGrid * 3;
/// From opening to the first question, in milliseconds: what is shown meanwhile is on the screen by then.
constexpr int kUntilQuestions = 50;

QLabel* words(const QString& text, const QString& name) {
  auto* label = new QLabel(text);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  // One line, as wide as there is room: what wraps would need a height that nobody knows beforehand.
  label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  return label;
}

QLabel* quietWords(const QString& text) {
  auto* label = new QLabel(text);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setForegroundRole(QPalette::PlaceholderText);
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
  session_.setupController = this;
  setObjectName(QStringLiteral("SetupController"));
  content_ = makeContent();
  setContent(content_);
  flow_.showLooking();
  resize(minimumSizeHint());
  QTimer::singleShot(kUntilQuestions, this, [this] { lookForVantor(); });
}

QWidget* SetupController::makeContent() {
  auto* content = new QWidget;
  content->setFixedWidth(kContentWidth);
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(metrics::kGrid * 4, metrics::kGrid * 3, metrics::kGrid * 4, metrics::kGrid * 3);
  column->setSpacing(0);
  standaloneRadioi_ = new QButtonGroup(this);
  standaloneRadioi_->setObjectName(QStringLiteral("standaloneRadioi"));
  const auto addMode = [&](int row, const QString& title, const QString& meaning) {
    auto* radio = new QRadioButton(title);
    radio->setChecked(row == 0);
    standaloneRadioi_->addButton(radio, row);
    column->addWidget(radio);
    column->addSpacing(metrics::kGrid / 2);
    column->addWidget(indented(quietWords(meaning)));
  };
  addMode(
      0, tr("Link to Vantor"),
      tr("Customers, jobs and service items come from the company that is open in Vantor, and your time is "
         "sent to it."));
  vtSettingsView_ = makeSettings();
  column->addWidget(vtSettingsView_);
  column->addSpacing(metrics::kGrid * 3);
  addMode(1, tr("Work standalone"), tr("You keep the lists yourself. Your time stays in your document."));
  column->addWidget(makeStatus());
  column->addStretch();
  column->addWidget(makeButtons());
  connect(standaloneRadioi_, &QButtonGroup::idToggled, this, [this](int, bool checked) {
    if (checked) flow_.pickAMode();
  });
  return content;
}

QWidget* SetupController::makeSettings() {
  myCompanyFile_ = new PathControl;
  myCompanyFile_->setObjectName(QStringLiteral("myCompanyFile"));
  myCompanyFile_->setAccessibleName(tr("Company file"));
  connect(myCompanyFile_, &PathControl::pieceClicked, this,
          [this](const QString& path) { flow_.pathControlHit(path); });
  myNoFileOpenText_ = words({}, QStringLiteral("myNoFileOpenText"));
  NoneText_ = words(tr("Vantor is not running."), QStringLiteral("NoneText"));
  lookAgain_ = new QPushButton(tr("Look Again"));
  lookAgain_->setAutoDefault(false);
  makeQuiet(*lookAgain_);
  connect(lookAgain_, &QPushButton::clicked, this, [this] { lookForVantor(); });
  myNamePopup_ = new QComboBox;
  myNamePopup_->setObjectName(QStringLiteral("myNamePopup"));
  myNamePopup_->setAccessibleName(tr("Employee"));
  myNamePopup_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);

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
  for (QWidget* each : {static_cast<QWidget*>(NoneText_), static_cast<QWidget*>(myNoFileOpenText_),
                        static_cast<QWidget*>(myCompanyFile_)}) {
    each->setMinimumHeight(metrics::kControlHeight);
    row->addWidget(each);
  }
  auto* again = new QHBoxLayout;
  again->setContentsMargins(-metrics::kGrid, 0, 0, 0);  // its words stand under those above
  again->addWidget(lookAgain_, 0, Qt::AlignLeft);
  row->addLayout(again);
  form->addRow(tr("Company file:"), company);
  form->addRow(tr("Employee:"), myNamePopup_);
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
  runCommand(session_, tr("Set Up Pendra"), [this] { flow_.awakeFromNib(); });
}

void SetupController::save() {
  const QPointer<SetupController> alive(this);
  saving_ = true;
  runCommand(session_, tr("Set Up Pendra"), [this] { flow_.save(); });
  if (alive) saving_ = false;
}

void SetupController::showDisplay(const SetupDisplay& display) {
  NoneText_->setVisible(display.noneText);
  myNoFileOpenText_->setVisible(display.noFileOpen);
  myNoFileOpenText_->setText(display.noFileOpenText.isEmpty() ? tr("No company is open in Vantor.")
                                                              : display.noFileOpenText);
  myNoFileOpenText_->setToolTip(display.noFileOpenText);
  myCompanyFile_->setVisible(!display.noFileOpen);
  myCompanyFile_->setPath(display.companyFile);
  lookAgain_->setVisible(display.canLookAgain);
  if (const QString chosen = selectedName(); display.employeeNames != employeeNames_) {
    employeeNames_ = display.employeeNames;
    myNamePopup_->clear();
    myNamePopup_->addItems(employeeNames_);
    myNamePopup_->setCurrentText(chosen);
  }
  myNamePopup_->setEnabled(display.linkedControls);
  okButton_->setEnabled(display.ok && !display.loading);
  cancelButton_->setEnabled(!display.loading);
  statusSpinner_->setVisible(display.loading);
  statusText_->setVisible(display.loading);
  vtSettingsView_->setVisible(display.settingsVisible);
  fitToContent();
  // Nothing is drawn by itself while Vantor's answers are awaited.
  if (display.loading) repaint();
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

int SetupController::selectedRow() const { return standaloneRadioi_->checkedId(); }

QString SetupController::selectedName() const { return myNamePopup_->currentText(); }

void SetupController::close() {
  if (saving_) {
    windowWillClose();
  } else {
    AppWindow::close();
  }
}

void SetupController::finish() { AppWindow::close(); }

void SetupController::windowWillClose() {
  if (session_.setupController == this) session_.setupController = nullptr;
}

void SetupController::closeEvent(QCloseEvent* event) {
  windowWillClose();
  AppWindow::closeEvent(event);
}

}  // namespace pendra
