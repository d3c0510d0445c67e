#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QPointer>
#include <QTest>

#include "NoCommands.h"
#include "support/TestSession.h"
#include "ui/ListWindows.h"
#include "ui/TimerWindowController.h"

namespace pendra {

/// A person at a desk: a document on the disk, the real timer window over it with its sheets and lists, a
/// clock that stands still, and alerts that answer from a script or are held (`alerts`). A test fills the
/// document, sits down, and says what is done and what is seen, by the names that a person would use:
///
///     desk.addActivity(&desk.addCustomer("Acme"), &desk.addService("Design"));
///     desk.sitDown();
///     desk.press("Add activity", [&] {  // what is done in the sheet that this opens
///       desk.typeInto("Customer", "Acme");
///       desk.press("Cancel");
///     });
///     EXPECT_EQ(desk.rows("Activities"), 1);
///
/// What is named stands in the sheet that is open, else in the window that is at the front. From the moment
/// when the person sits down every change of the document must stand in an edit.
class Desk : public TestSession, private NoCommands {
 public:
  using Steps = std::function<void()>;

  explicit Desk(bool standalone = true);
  ~Desk() override;

  /// Opens the timer window on what the document holds by now.
  void sitDown();
  /// Tells what the file holds at this moment, read from a copy.
  void onDisk(const std::function<void(const ObjectContext&)>& look) const;

  // What is done.

  void type(const QString& text);
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  /// Clicks on the button or check box of that name. `inSheet` is done in the sheet that it opens, which must
  /// be closed again at the end of it.
  void press(const QString& button, Steps inSheet = {});
  /// Puts the keyboard into the field of that name.
  void go(const QString& field);
  /// Replaces what stands in the field by typing.
  void typeInto(const QString& field, const QString& text);
  void select(const QString& table, int row);
  /// Clicks into the cell under that head.
  void pressCell(const QString& table, int row, const QString& column, Steps inSheet = {});
  /// Begins to type over the cell, all of which is selected.
  void editCell(const QString& table, int row, const QString& column);
  void command(Command command, Steps inSheet = {});
  /// So many seconds go by, the last of which is shown.
  void wait(double seconds);
  /// Lets happen what waits for its turn.
  static void settle();

  // What is seen.

  [[nodiscard]] QString text(const QString& field) const;
  [[nodiscard]] QString description(const QString& name) const;
  [[nodiscard]] bool isEnabled(const QString& name) const;
  [[nodiscard]] bool isChecked(const QString& box) const;
  /// The name of whatever the keyboard is in.
  [[nodiscard]] QString focus() const;
  [[nodiscard]] int rows(const QString& table) const;
  [[nodiscard]] int selectedRow(const QString& table) const;
  [[nodiscard]] QString cell(const QString& table, int row, const QString& column) const;
  /// What the list of a field offers when it is opened.
  [[nodiscard]] QStringList offered(const QString& field) const;
  /// Whether something of that name is to be seen.
  [[nodiscard]] bool sees(const QString& name) const;
  /// The cells of a row that say something, with a blank between them; empty when there is no such row.
  [[nodiscard]] QString row(const QString& table, int row) const;
  [[nodiscard]] QStringList notices() const;
  [[nodiscard]] TimerWindowController& timer() { return *timer_; }
  /// The window or sheet at the front.
  [[nodiscard]] QWidget& front() const;

  /// The visible control of that name at the front; fails the test when there is none.
  template <class Widget = QWidget>
  [[nodiscard]] Widget& named(const QString& accessibleName) const {
    for (auto* widget : front().findChildren<Widget*>()) {
      if (widget->accessibleName() == accessibleName && widget->isVisible()) return *widget;
    }
    ADD_FAILURE() << "Nothing at the front is called " << accessibleName.toStdString();
    throw std::runtime_error(accessibleName.toStdString());
  }

 private:
  void perform(Command command, QWidget* sender) override;

  [[nodiscard]] QModelIndex index(const QString& table, int row, const QString& column) const;
  /// Has `steps` done in the next sheet that opens, while `opening` waits for its end.
  void during(const Steps& opening, Steps steps);

  void showList(std::unique_ptr<ListEditorWindow> (&make)(const WindowFrame&));

  std::unique_ptr<TimerWindowController> timer_;
  std::unique_ptr<ListEditorWindow> list_;
  QPointer<QWidget> window_;
};

}  // namespace pendra
