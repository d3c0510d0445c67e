#include "ui/ShellWindows.h"

#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

#include "analytics/Disclosure.h"
#include "document/TimeAway.h"
#include "platform/Preferences.h"
#include "platform/Resources.h"
#include "platform/Text.h"
#include "ui/Buttons.h"
#include "ui/CommandTarget.h"
#include "ui/HelpPlace.h"
#include "ui/Symbols.h"
#include "ui/TabularText.h"
#include "ui/Theme.h"
#include "ui_core/HelpAnchors.h"
#include "ui_core/ShellCommands.h"

namespace pendra {

namespace {

constexpr int kMargin = metrics::kGrid * 4;
constexpr int kTextWidth = 440;
constexpr int kSign = 56;
constexpr qsizetype kRecentShown = 5;
constexpr int kMostMinutes = 240;

QLabel* quietText(const QString& text) {
  auto* label = new QLabel(text);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setFixedWidth(kTextWidth);
  label->setForegroundRole(QPalette::PlaceholderText);
  return label;
}

/// The program's sign, sharp on whatever screen the window is.
class Sign final : public QWidget {
 public:
  Sign() { setFixedSize(kSign, kSign); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    programIcon().paint(&painter, rect());
  }
};

QLabel* title(const QString& text) {
  auto* label = new QLabel(text);
  QFont font = Theme::timeFont();
  font.setPointSizeF(font.pointSizeF() * 0.6);
  label->setFont(font);
  return label;
}

/// A column of content with room around it, and the window's buttons below.
struct Page {
  QWidget* widget = new QWidget;
  QVBoxLayout* column = new QVBoxLayout(widget);

  Page() {
    column->setContentsMargins(kMargin, kMargin, kMargin, metrics::kSide + metrics::kGrid);
    column->setSpacing(metrics::kSide);
    column->setSizeConstraint(QLayout::SetFixedSize);
  }
  /// The program's sign, and beside it a title and what goes under that.
  void addHeading(const QString& text, QLabel* under = nullptr) {
    auto* words = new QVBoxLayout;
    words->setSpacing(0);
    words->addStretch();
    words->addWidget(title(text));
    if (under) words->addWidget(under);
    words->addStretch();
    auto* heading = new QHBoxLayout;
    heading->setSpacing(metrics::kSide);
    heading->addWidget(new Sign);
    heading->addLayout(words, 1);
    column->addLayout(heading);
  }
  QPushButton* addButton(const QString& text) {
    auto* button = new QPushButton(text);
    column->addWidget(button, 0, Qt::AlignRight);
    return button;
  }
};

/// What a recent document is opened by; of two of one name each is told by its folder.
QString recentTitle(const QString& path, const QStringList& all) {
  const auto nameOf = [](const QString& one) { return QFileInfo(one).completeBaseName(); };
  const QString name = nameOf(path);
  const bool isAlone =
      std::count_if(all.begin(), all.end(), [&](const QString& one) { return nameOf(one) == name; }) == 1;
  QString title = isAlone ? formatted(ShellWindow::tr("Open “%@”"), {name})
                          : formatted(ShellWindow::tr("Open “%@” in “%@”"), {name, QFileInfo(path).path()});
  return title.replace(u'&', QStringLiteral("&&"));
}

}  // namespace

ShellWindow::ShellWindow(const WindowFrame& frame, const QString& title) : AppWindow(frame, title) {
  layout()->setSizeConstraint(QLayout::SetFixedSize);
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, [this] { close(); });
}

AboutBox::AboutBox(const WindowFrame& frame, const QString& version)
    : ShellWindow(frame, tr("About Pendra")) {
  setHelpAnchor(*this, help::kAbout);
  Page page;
  auto* versionField = new QLabel(version);
  versionField->setObjectName(QStringLiteral("versionField"));
  versionField->setTextInteractionFlags(Qt::TextSelectableByMouse);
  page.addHeading(tr("Pendra"), versionField);
  page.column->addWidget(
      quietText(tr("Keeps track of the time you work for your customers, on its own or beside Vantor. Your "
                   "data is one file that is yours to copy.")));
  QPushButton* ok = page.addButton(tr("OK"));
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, [this] { close(); });
  setContent(page.widget);
}

WelcomeWindow::WelcomeWindow(const WindowFrame& frame) : ShellWindow(frame, tr("Welcome to Pendra")) {
  setHelpAnchor(*this, help::kWelcome);
  Page page;
  page.addHeading(tr("Welcome to Pendra"));
  page.column->addWidget(
      quietText(tr("Pick an activity, press play, and review the hours at the end of the day. Your time is "
                   "saved every two minutes, and when you close the window.")));
  const auto addWay = [&](const QString& text, const std::function<void()>& act) {
    auto* button = new QPushButton(text);
    connect(button, &QPushButton::clicked, this, act);
    page.column->addWidget(button);
    return button;
  };
  const auto insteadOfThis = [this, &target = frame.target](Command command) {
    return [this, &target, command] {
      close();
      target.perform(command, this);
    };
  };
  const QStringList recent = frame.target.recentDocuments().mid(0, kRecentShown);
  for (const QString& path : recent) {
    QPushButton* button = addWay(recentTitle(path, recent), [this, &target = frame.target, path] {
      close();
      target.openRecent(path);
    });
    button->setObjectName(QStringLiteral("recentDocument"));
    button->setToolTip(path);
    button->setAutoDefault(true);  // so that Return presses it
    if (path == recent.front()) {
      makePrimary(*button);
      button->setFocus();
    }
  }
  QPushButton* setUp = addWay(tr("Set Up a New Document…"), insteadOfThis(Command::New));
  if (recent.isEmpty()) makePrimary(*setUp);
  addWay(tr("Open a Document…"), insteadOfThis(Command::Open));
  addWay(tr("Read How It Works"), [&workspace = frame.session.ports().workspace] {
    showHelp(help::kFirstDay, workspace, resourceFolder());
  });
  QPushButton* done = page.addButton(tr("Close"));
  makeQuiet(*done);
  connect(done, &QPushButton::clicked, this, [this] { close(); });
  setContent(page.widget);
}

PreferencesWindow::PreferencesWindow(const WindowFrame& frame)
    : ShellWindow(frame, tr("Preferences")),
      session_(frame.session),
      defaults_(frame.session.ports().defaults) {
  setHelpAnchor(*this, help::kPreferences);
  Page page;
  const auto add = [&](const QString& key, const QString& text, const QString& explanation, bool byDefault) {
    auto* group = new QVBoxLayout;
    group->setSpacing(metrics::kGrid / 2);
    group->addWidget(addPreference(key, text, explanation, byDefault));
    auto* words = new QHBoxLayout;
    words->addSpacing(metrics::kGrid * 3);
    words->addWidget(quietText(explanation));
    group->addLayout(words);
    page.column->addLayout(group);
  };
  add(preferences::kMergeSubmissions, tr("Merge a day's entries of an activity when sending"),
      tr("One record for each activity and day instead of one for each entry. Always on again when Pendra "
         "starts."),
      false);
  add(preferences::kHideSubmitted, tr("Hide sent entries in the time log"),
      tr("Sent entries stay in the document and are left out of the list and of an export."), false);
  page.column->addLayout(makeAwayMinutes());
  add(preferences::kKeepInPanel, tr("Keep Pendra in the panel when its window closes"),
      tr("Timing goes on, and the icon in the panel brings the window back. Where the desktop has no panel, "
         "closing the window closes the document."),
      false);
  add(preferences::kAnalyticsTracker, tr("Send usage statistics"), statisticsDisclosureHere(), true);
  page.column->addLayout(makeBackupFolder());
  setContent(page.widget);
}

/// A folder that is not there is marked and not taken over.
QLayout* PreferencesWindow::makeBackupFolder() {
  auto* field = new QLineEdit(defaults_.text(preferences::kBackupFolder).value_or(QString()));
  field->setObjectName(preferences::kBackupFolder);
  field->setAccessibleName(tr("Backup folder"));
  field->setPlaceholderText(tr("Pendra's own place"));
  field->setToolTip(session_.ports().places.backupFolder());
  auto* title = new QLabel(tr("Backup folder"));
  title->setBuddy(field);
  QLabel* remark = quietText(QString());
  const auto say = [field, remark](bool isTaken) {
    field->setProperty(kUnreadableProperty, !isTaken);
    field->update();
    showText(*remark, isTaken ? tr("Backups make themselves here, in a folder for each document.")
                              : tr("There is no such folder. Backups go where they went before."));
    field->setAccessibleDescription(remark->text());
  };
  say(true);
  connect(field, &QLineEdit::editingFinished, this, [this, field, say] {
    const QString path = field->text().trimmed();
    const bool isTaken = path.isEmpty() || (QDir::isAbsolutePath(path) && QFileInfo(path).isDir());
    if (isTaken && path != defaults_.text(preferences::kBackupFolder).value_or(QString())) {
      defaults_.setText(preferences::kBackupFolder, path.isEmpty() ? path : QDir::cleanPath(path));
    }
    say(isTaken);
  });
  auto* group = new QVBoxLayout;
  group->setSpacing(metrics::kGrid / 2);
  for (QWidget* part :
       {static_cast<QWidget*>(title), static_cast<QWidget*>(field), static_cast<QWidget*>(remark)}) {
    group->addWidget(part);
  }
  return group;
}

QLayout* PreferencesWindow::makeAwayMinutes() {
  const QString explanation =
      tr("When nobody has used the computer for so long while time ran, Pendra asks whether it counts. Until "
         "you answer, it does.");
  auto* minutes = new QSpinBox;
  minutes->setObjectName(preferences::kAwayMinutes);
  minutes->setAccessibleName(tr("Ask after minutes"));
  minutes->setAccessibleDescription(explanation);
  minutes->setRange(0, kMostMinutes);
  minutes->setSpecialValueText(tr("Never"));
  auto* title = new QLabel(tr("Ask after minutes"));
  title->setBuddy(minutes);
  const auto show = [this, minutes] {
    const QSignalBlocker silent(minutes);
    minutes->setValue(awayMinutes(defaults_));
  };
  show();
  connect(minutes, &QSpinBox::valueChanged, this, [this](int value) { setAwayMinutes(defaults_, value); });
  observations_.push_back(defaults_.changesOf(preferences::kAwayMinutes).observe(show));
  auto* row = new QHBoxLayout;
  row->addWidget(title);
  row->addWidget(minutes);
  row->addStretch();
  auto* group = new QVBoxLayout;
  group->setSpacing(metrics::kGrid / 2);
  group->addLayout(row);
  group->addWidget(quietText(explanation));
  return group;
}

QCheckBox* PreferencesWindow::addPreference(const QString& key, const QString& title,
                                            const QString& explanation, bool byDefault) {
  auto* box = new QCheckBox(title);
  box->setAccessibleName(title);
  box->setAccessibleDescription(explanation);
  box->setObjectName(key);
  const auto show = [this, box, key, byDefault] {
    const QSignalBlocker silent(box);
    box->setChecked(defaults_.contains(key) ? defaults_.boolean(key) : byDefault);
  };
  show();
  // Assistive technology toggles a box and does not click it.
  connect(box, &QCheckBox::toggled, this, [this, key](bool checked) { defaults_.setBoolean(key, checked); });
  observations_.push_back(defaults_.changesOf(key).observe(show));
  return box;
}

}  // namespace pendra
