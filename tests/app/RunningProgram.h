#pragma once
// The whole program in its real windows, in a world of its own: folders that go with it, a clock that moves
// only when it is told to, alerts that stand until a button of theirs is pressed.

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include "Program.h"
#include "analytics/Consent.h"
#include "model/Activity.h"
#include "model/Queries.h"
#include "model/TimeEntry.h"
#include "platform/Preferences.h"
#include "support/ManualClock.h"
#include "support/ScriptedPresence.h"
#include "support/ScriptedWorkspace.h"
#include "support/TestPlaces.h"
#include "ui/LogPaneView.h"
#include "ui/RowTableView.h"
#include "ui/TimerWindowController.h"

namespace pendra {

class RunningProgram {
 public:
  using Fill = std::function<void(ObjectContext&, DocumentSettings&)>;

  /// Makes "Work.pdr" of somebody's own, with what `fill` puts in, and launches into it.
  explicit RunningProgram(const Fill& fill, bool standalone = true) {
    QGuiApplication::setQuitOnLastWindowClosed(false);
    Consent(environment_.defaults).noticeAnswered();
    const QString path = places.documents + u"/Work.pdr";
    {
      const auto made = OpenDocument::read(path, loadObjectModel(), clock, *environment_.calendar);
      ObjectContext& context = *made.value()->context();
      context.fill([&] {
        made.value()->settings().identity()->setEmployeeName(QStringLiteral("Me"));
        made.value()->settings().setStandalone(standalone);
        fill(context, made.value()->settings());
      });
      std::ignore = context.save();
    }
    program.launch(path);
    std::ignore = QTest::qWaitForWindowActive(&window());
  }
  ~RunningProgram() {
    program.prepareEnd();
    std::ignore = program.mayEnd();
  }

  [[nodiscard]] TimerWindowController& timer() { return *program.windows().timerWindow(); }
  [[nodiscard]] QWidget& window() { return *timer().log().window(); }
  [[nodiscard]] RowTableView& activities() {
    return *window().findChild<RowTableView*>(QStringLiteral("activityTable"));
  }
  [[nodiscard]] Session& session() { return timer().state().session(); }
  [[nodiscard]] ObjectContext& context() { return *session().context(); }
  [[nodiscard]] QString label(const char* objectName) {
    return window().findChild<QLabel*>(QString::fromLatin1(objectName))->text();
  }

  /// The item of the open menu whose title begins so.
  [[nodiscard]] QAction* item(QWidget& of, const QString& beginning) {
    for (const QAction* menu : of.findChild<QMenuBar*>()->actions()) {
      for (QAction* action : menu->menu()->actions()) {
        if (QString(action->text()).remove(u'&').startsWith(beginning)) return action;
      }
    }
    return nullptr;
  }
  /// Opens the menu of an item, presses it if it is enabled, and closes the menu; its title then.
  QString choose(QWidget& of, const QString& beginning) {
    QAction* const action = item(of, beginning);
    auto* const menu = qobject_cast<QMenu*>(action->parent());
    Q_EMIT menu->aboutToShow();
    const QString title = QString(action->text()).remove(u'&');
    const bool enabled = action->isEnabled();
    action->trigger();
    Q_EMIT menu->aboutToHide();
    return enabled ? title : title + u" (off)";
  }
  QString choose(const QString& beginning) { return choose(window(), beginning); }

  /// The alert that stands; none when none does.
  [[nodiscard]] static QMessageBox* alert() {
    for (QWidget* top : QApplication::topLevelWidgets()) {
      if (auto* box = qobject_cast<QMessageBox*>(top); box && box->isVisible()) return box;
    }
    return nullptr;
  }
  static bool press(QWidget& in, const QString& title) {
    for (QPushButton* button : in.findChildren<QPushButton*>()) {
      if (button->text().remove(u'&') != title || !button->isVisible()) continue;
      button->click();
      return true;
    }
    return false;
  }
  [[nodiscard]] QString notice() {
    QWidget* line = window().findChild<QWidget*>(QStringLiteral("noticeLine"));
    return line->isHidden() ? QString() : line->accessibleDescription();
  }

  TestPlaces places;

 private:
  Environment environment_{.places = places,
                           .clock = std::make_unique<ManualClock>(),
                           .calendar = std::make_unique<Calendar>(QTimeZone("Europe/Berlin")),
                           .workspace = std::make_unique<ScriptedWorkspace>(),
                           .panel = std::make_unique<ScriptedPanel>(),
                           .notes = std::make_unique<ScriptedNotes>()};

 public:
  ScriptedPanel& panel = static_cast<ScriptedPanel&>(*environment_.panel);
  ScriptedNotes& notes = static_cast<ScriptedNotes&>(*environment_.notes);
  ManualClock& clock = static_cast<ManualClock&>(*environment_.clock);
  Program program{environment_};
};

}  // namespace pendra
