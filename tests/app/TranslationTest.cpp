// A walk through everything that opens, under a translation that puts brackets around every text: whatever
// people see without them is a text that nobody could translate. F1 opens the help's chapter about each.
#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QRegularExpression>
#include <QTabBar>
#include <QTranslator>

#include "CommandLine.h"
#include "CommandTable.h"
#include "RunningProgram.h"
#include "document/TimeAway.h"
#include "platform/Translation.h"
#include "ui_core/HelpAnchors.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

/// What stands in no program: the names of this document and of this machine's user, and units and marks that
/// are the same in the languages that have them.
const QRegularExpression kOfNobody(
    u"Acme|Zed|Build|Design|Some note|Work|Pendra|Vantor|\\bMe\\b|PM|AM|pdr(backup)?|https?:\\S+|/\\S+"_s);
/// Dates and times are the locale's, and keys are the keyboard's.
const QRegularExpression kOfTheLocale(
    u"\\b(Jan|Feb|März|Apr|Mai|Jun|Jul|Aug|Sept?|Okt|Nov|Dez)\\w*\\.?|\\b(Mo|Di|Mi|Do|Fr|Sa|So)\\b\\.?|"
    u"(Ctrl|Alt)\\+\\w+|"
    "(Mon|Diens|Donners|Frei|Sams|Sonn)tag|Mittwoch"_s);

class Reader {
 public:
  explicit Reader(const ScriptedWorkspace& workspace) : workspace_(workspace) {}

  /// Notes every text in the window that is not between brackets, and where F1 in it leads.
  void read(QWidget& window) {
    if (qobject_cast<QFileDialog*>(&window)) return;  // the toolkit's own
    note(window, window.windowTitle());
    for (QWidget* widget : window.findChildren<QWidget*>()) {
      if (!widget->isVisibleTo(&window) && !qobject_cast<QMenu*>(widget)) continue;
      readWidget(*widget);
    }
    const qsizetype before = workspace_.opened().size();
    QTest::keyClick(&window, Qt::Key_F1);
    if (workspace_.opened().size() == before) withoutHelp_ << window.windowTitle();
    for (const QString& address : workspace_.opened().mid(before)) chapters_ << address.section(u'#', 1);
  }
  [[nodiscard]] QStringList untranslated() const { return untranslated_.values(); }
  [[nodiscard]] QStringList withoutHelp() const { return withoutHelp_.values(); }
  [[nodiscard]] QStringList chapters() const { return chapters_.values(); }

 private:
  void note(const QObject& of, QString text) {
    static const QRegularExpression bracketed(u"⟦[^⟦⟧]*⟧"_s);
    static const QRegularExpression markup(u"<[^>]*>"_s);
    for (qsizetype before = -1; before != text.size();) {
      before = text.size();
      text.remove(bracketed);
    }
    const QString rest = text.remove(u'&').remove(markup).remove(kOfNobody).remove(kOfTheLocale);
    static const QRegularExpression words(u"\\p{L}{2,}"_s);
    if (words.match(rest).hasMatch()) untranslated_ << of.objectName() + u": "_s + rest.simplified();
  }

  void readWidget(QWidget& widget) {
    for (const QString& text : {widget.toolTip(), widget.accessibleName(), widget.accessibleDescription()}) {
      note(widget, text);
    }
    for (const char* property : {"text", "title", "placeholderText", "emptyTitle"}) {
      if (!qobject_cast<QLineEdit*>(&widget) || qstrcmp(property, "text") != 0) {
        note(widget, widget.property(property).toString());
      }
    }
    for (const QAction* action : widget.actions()) note(widget, action->text());
    if (const auto* combo = qobject_cast<QComboBox*>(&widget)) {
      for (int at = 0; at < combo->count(); ++at) note(widget, combo->itemText(at));
    }
    if (const auto* tabs = qobject_cast<QTabBar*>(&widget)) {
      for (int at = 0; at < tabs->count(); ++at) note(widget, tabs->tabText(at));
    }
    if (const auto* view = qobject_cast<QAbstractItemView*>(&widget); view && view->model()) {
      readModel(widget, *view->model());
    }
  }

  void readModel(const QWidget& widget, const QAbstractItemModel& model) {
    for (int column = 0; column < model.columnCount(); ++column) {
      note(widget, model.headerData(column, Qt::Horizontal).toString());
      note(widget, model.headerData(column, Qt::Horizontal, Qt::AccessibleTextRole).toString());
      for (int row = 0; row < model.rowCount(); ++row) {
        for (const int role : {Qt::DisplayRole, Qt::AccessibleTextRole, Qt::ToolTipRole}) {
          note(widget, model.index(row, column).data(role).toString());
        }
      }
    }
  }

  const ScriptedWorkspace& workspace_;
  QSet<QString> untranslated_;
  QSet<QString> withoutHelp_;
  QSet<QString> chapters_;
};

void fillAll(ObjectContext& context, DocumentSettings&) {
  auto& service = context.insert<Service>();
  service.setName(u"Design"_s);
  for (const char* name : {"Acme", "Zed"}) {
    auto& customer = context.insert<Customer>();
    customer.setName(QString::fromLatin1(name));
    auto& job = context.insert<Job>();
    job.setName(u"Build"_s);
    job.setCustomer(&customer);
    auto& activity = context.insert<Activity>();
    activity.setCustomer(&customer);
    activity.setJob(&job);
    activity.setService(&service);
    activity.setNotes(u"Some note"_s);
    for (int entry = 0; entry < 3; ++entry) activity.addEntry().setDuration(5000);
  }
}

/// Opens one after the other whatever a command opens, and has all of it read.
void walk(RunningProgram& program, Reader& reader) {
  // Whatever asks or stands over a window is read and answered as Escape does.
  QTimer attendant;
  QObject::connect(&attendant, &QTimer::timeout, qApp, [&] {
    QWidget* panel = QApplication::activeModalWidget();
    if (!panel) return;
    reader.read(*panel);
    if (auto* dialog = qobject_cast<QDialog*>(panel)) return dialog->reject();
    panel->close();
  });
  attendant.start(20);
  const auto readAll = [&] {
    QTest::qWait(60);
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (!window->isVisible() || window->windowType() == Qt::Popup || window->isModal()) continue;
      window->activateWindow();
      std::ignore = QTest::qWaitForWindowActive(window);
      reader.read(*window);
    }
  };
  const auto perform = [&](Command command) {
    program.window().activateWindow();
    program.program.commands().perform(command, &program.window());
    readAll();
  };
  for (const Menu& menu : allMenus()) {
    for (const CommandRow& row : menu.rows) {
      if (row.command == Command::Quit || row.command == Command::Close || row.command == Command::Open ||
          row.command == Command::New) {
        continue;
      }
      program.activities().selectRow(0);
      perform(row.command);
    }
  }
  TimeEntry* entry = program.context().all<TimeEntry>()[0];
  markAway(program.context(), {entry}, {*entry->start(), *entry->start() + 1000});
  program.session().ports().windows.show(WindowKind::TimeAway);
  readAll();
  perform(Command::New);  // which asks about the document first
}

TEST(Translation, EveryTextOfEveryWindowCanBeTranslatedAndHelpedWith) {
  const QLocale before;
  QLocale::setDefault(QLocale(QLocale::German));
  installTranslations(*qApp, QStringLiteral(PENDRA_TRANSLATIONS));
  EXPECT_EQ(usage().front(), u'⟦');
  {
    RunningProgram program(&fillAll, false);
    Reader reader(static_cast<ScriptedWorkspace&>(program.session().ports().workspace));
    walk(program, reader);
    EXPECT_THAT(reader.untranslated(), testing::IsEmpty());
    EXPECT_THAT(reader.withoutHelp(), testing::IsEmpty());
    EXPECT_THAT(
        reader.chapters(),
        testing::IsSupersetOf({help::kTimerWindow, help::kActivityEditor, help::kCustomersAndJobs,
                               help::kServiceItems, help::kReport, help::kTimeAway, help::kPreferences,
                               help::kAbout, help::kWelcome, help::kBackups, help::kVantorNotFound}));
  }
  for (QTranslator* each : qApp->findChildren<QTranslator*>()) delete each;
  QLocale::setDefault(before);
}

}  // namespace
}  // namespace pendra
