#include "ui/ShellWindows.h"

#include <QFileInfo>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "platform/Resources.h"
#include "platform/Text.h"
#include "ui/Buttons.h"
#include "ui/CommandTarget.h"
#include "ui/HelpPlace.h"
#include "ui/Labels.h"
#include "ui/Symbols.h"
#include "ui/Theme.h"
#include "ui_core/HelpAnchors.h"
#include "ui_core/ShellCommands.h"

namespace pendra {

namespace {

constexpr int kMargin = metrics::kGrid * 4;
constexpr int kTextWidth = 440;
constexpr int kSign = 56;
constexpr qsizetype kRecentShown = 5;

QLabel* quietText(const QString& text) {
  return makeLabel(text, {.isQuiet = true, .wraps = true, .width = kTextWidth});
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
  hideMenuBar();
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
                   "stored in the moment in which it changes.")));
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

}  // namespace pendra
