#include "ui/PreferencesWindow.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

#include "PreferencesPages.h"
#include "analytics/Disclosure.h"
#include "model/Customer.h"
#include "model/Identity.h"
#include "model/Job.h"
#include "model/Service.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui/CommandTarget.h"
#include "ui/HelpPlace.h"
#include "ui/Theme.h"
#include "ui_core/HelpAnchors.h"

namespace pendra {

namespace {

constexpr int kBeforeTabs = 12;

/// The tabs over a line that runs from side to side.
class TabRow final : public QWidget {
 public:
  explicit TabRow(QTabBar& tabs) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kBeforeTabs, 0, 0, 0);
    row->addWidget(&tabs);
    row->addStretch();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter(this).fillRect(QRect(0, height() - 1, width(), 1), Theme::colours(palette()).line);
  }
};

class GeneralPage final : public PreferencePage {
 public:
  explicit GeneralPage(UserDefaults& preferences) : PreferencePage(preferences) {
    addSwitch({preferences::kHideSubmitted, false}, tr("Hide sent entries in the time log"),
              tr("Sent entries stay in the document and are left out of the list and of an export."));
    addSwitch({preferences::kKeepInPanel, false}, tr("Keep Pendra in the panel when its window closes"),
              tr("Timing goes on, and the icon in the panel brings the window back. Where the desktop has no "
                 "panel, closing the window closes the document."));
  }
};

class TimingPage final : public PreferencePage {
 public:
  explicit TimingPage(UserDefaults& preferences) : PreferencePage(preferences) {
    addSwitch(preferences::kOneAtATime, tr("Starting an activity stops the others"),
              tr("Off: several may run at the same time, as you like."));
    addAway();
    addReminder();
  }

 private:
  void addAway();
  void addReminder();
};

/// Off is a number as well, which the box writes and the field does not show.
void TimingPage::addAway() {
  const QString explanation =
      tr("When nobody touched the computer, or it slept, while a timer ran. Nothing is taken off unasked.");
  auto* box = new QCheckBox(tr("Ask after"));
  box->setObjectName(QStringLiteral("askWhenAway"));
  box->setAccessibleName(tr("Ask after minutes away"));
  box->setAccessibleDescription(explanation);
  QSpinBox* minutes = makeNumber(preferences::kAwayMinutes, tr("Ask after minutes"));
  minutes->setAccessibleDescription(explanation);
  follow(preferences::kAwayMinutes.key, [this, box, minutes] {
    const QSignalBlocker silent(box);
    box->setChecked(preferences::kAwayMinutes.of(defaults()) > 0);
    minutes->setEnabled(box->isChecked());
  });
  connect(box, &QCheckBox::toggled, this,
          [this, minutes](bool on) { preferences::kAwayMinutes.set(defaults(), on ? minutes->value() : 0); });
  addLine({box, minutes, new QLabel(tr("minutes away"))}, {quietWords(explanation)});
}

void TimingPage::addReminder() {
  QCheckBox* box = makeSwitch(preferences::kReminder, tr("Remind me when nothing runs for"),
                              tr("Remind me when nothing runs"));
  QSpinBox* minutes = makeNumber(preferences::kRemindMinutes, tr("Remind after minutes"));
  QLineEdit* from = makeTime(preferences::kRemindFrom, tr("Remind from"));
  QLineEdit* until = makeTime(preferences::kRemindUntil, tr("Remind until"));
  follow(preferences::kReminder.key, [this, minutes, from, until] {
    const bool isOn = preferences::kReminder.isOn(defaults());
    for (QWidget* field :
         {static_cast<QWidget*>(minutes), static_cast<QWidget*>(from), static_cast<QWidget*>(until)}) {
      field->setEnabled(isOn);
    }
  });
  addLine({box, minutes, new QLabel(tr("minutes"))},
          {quietWords(tr("Monday to Friday, from"), 0), from, quietWords(tr("to"), 0), until});
}

class StatisticsPage final : public PreferencePage {
 public:
  explicit StatisticsPage(UserDefaults& preferences) : PreferencePage(preferences) {
    addSwitch({preferences::kAnalyticsTracker, true}, tr("Send usage statistics"),
              statisticsDisclosureHere());
  }
};

template <class T>
qint64 numberOf(const ObjectContext& context) {
  return std::ssize(context.all<T>());
}

}  // namespace

VantorPage::VantorPage(const WindowFrame& frame)
    : PreferencePage(frame.session.ports().defaults),
      session_(frame.session),
      link_(new QLabel),
      lists_(quietWords({})),
      update_(new QPushButton(tr("Update Lists from Vantor"))) {
  addSwitch({preferences::kMergeSubmissions, false}, tr("Merge a day's entries of an activity when sending"),
            tr("One record for each activity and day instead of one for each entry. Always on again when "
               "Pendra starts."));
  link_->setObjectName(QStringLiteral("link"));
  link_->setTextFormat(Qt::PlainText);
  lists_->setObjectName(QStringLiteral("lists"));
  update_->setObjectName(QStringLiteral("updateLists"));
  auto* words = new QVBoxLayout;
  words->setContentsMargins(kUnderBox, metrics::kGrid, 0, 0);
  words->setSpacing(metrics::kGrid / 4);
  words->addWidget(link_);
  words->addWidget(lists_);
  words->addSpacing(metrics::kGrid);
  words->addWidget(update_, 0, Qt::AlignLeft);
  column().addLayout(words);
  connect(update_, &QPushButton::clicked, this,
          [this, &target = frame.target] { target.perform(Command::UpdateLists, window()); });
  documents_ = session_.documentChanges().observe([this] { showLink(); });
  showLink();
}

void VantorPage::showEvent(QShowEvent* event) {
  PreferencePage::showEvent(event);
  showLink();
}

void VantorPage::showLink() {
  edits_ = {};
  const OpenDocument* document = session_.document();
  const bool isLinked = document && !document->isStandalone();
  lists_->setVisible(isLinked);
  update_->setVisible(isLinked);
  if (!document) return link_->setText(tr("No document is open."));
  if (!isLinked) {
    return link_->setText(formatted(tr("“%@” is kept without Vantor."), {document->displayName()}));
  }
  const Identity* identity = document->settings().identity();
  const QString company = identity ? identity->companyFileName().value_or(QString()) : QString();
  link_->setText(company.isEmpty()
                     ? tr("Linked to Vantor")
                     : formatted(tr("Linked to “%@”"), {QFileInfo(company).completeBaseName()}));
  link_->setToolTip(company);
  const ObjectContext& context = *document->context();
  lists_->setText(formatted(tr("%@, %@, %@."),
                            {counted(numberOf<Customer>(context), "1 customer", "%Ln customers"),
                             counted(numberOf<Job>(context), "1 job", "%Ln jobs"),
                             counted(numberOf<Service>(context), "1 service item", "%Ln service items")}));
  edits_ = document->context()->observe([this](const ChangeSet& news) {
    if (news.touches<Customer>() || news.touches<Job>() || news.touches<Service>()) {
      QMetaObject::invokeMethod(
          this, [this] { showLink(); }, Qt::QueuedConnection);
    }
  });
}

PreferencesWindow::PreferencesWindow(const WindowFrame& frame) : ShellWindow(frame, tr("Preferences")) {
  setHelpAnchor(*this, help::kPreferences);
  UserDefaults& defaults = frame.session.ports().defaults;
  tabs_ = new QTabBar;
  tabs_->setObjectName(QStringLiteral("tabs"));
  tabs_->setDrawBase(false);
  tabs_->setExpanding(false);
  pages_ = new QStackedWidget;
  addPage(tr("General"), new GeneralPage(defaults));
  addPage(tr("Timing"), new TimingPage(defaults));
  addPage(tr("Appearance"), new AppearancePage(defaults));
  addPage(tr("Backups"), new BackupsPage(frame));
  addPage(tr("Vantor"), new VantorPage(frame));
  addPage(tr("Statistics"), new StatisticsPage(defaults));
  connect(tabs_, &QTabBar::currentChanged, pages_, &QStackedWidget::setCurrentIndex);
  addKeys();
  auto* content = new QWidget;
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(new TabRow(*tabs_));
  column->addWidget(pages_);
  setContent(content);
}

void PreferencesWindow::addPage(const QString& title, QWidget* page) {
  pages_->addWidget(page);  // first: the tab bar shows its first tab at once
  tabs_->addTab(title);
}

/// From wherever the keyboard is.
void PreferencesWindow::addKeys() {
  const auto add = [this](const QKeySequence& key, int by) {
    connect(new QShortcut(key, this), &QShortcut::activated, this, [this, by] {
      tabs_->setCurrentIndex((tabs_->currentIndex() + by + tabs_->count()) % tabs_->count());
    });
  };
  for (const char* key : {"Ctrl+Tab", "Ctrl+PgDown"}) add(QKeySequence(QString::fromLatin1(key)), 1);
  for (const char* key : {"Ctrl+Shift+Tab", "Ctrl+PgUp"}) add(QKeySequence(QString::fromLatin1(key)), -1);
}

}  // namespace pendra
