#include "Desk.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTimer>

#include "support/Events.h"
#include "ui/EarlierSheet.h"
#include "ui/RowTableView.h"

namespace pendra {

namespace {

constexpr int kTurns =
    4;  // an editor closes, its text is stored, a question is asked, each in a turn of its own

/// The visible top-level window with the table of activities.
QWidget* timerWindow() {
  const auto windows = QApplication::topLevelWidgets();
  const auto found = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
    const auto tables = window->findChildren<RowTableView*>();
    return qobject_cast<const QMainWindow*>(window) &&
           std::any_of(tables.begin(), tables.end(), [](const QWidget* table) {
             return table->accessibleName() == QStringLiteral("Activities");
           });
  });
  return found == windows.end() ? nullptr : *found;
}

}  // namespace

Desk::Desk(bool standalone) {
  session.masterDoNotTrackEvents = true;
  openDocument(standalone);
}

Desk::~Desk() {
  list_.reset();
  settle();
  timer_.reset();
}

void Desk::sitDown() {
  std::ignore = session.context()->save();
  session.context()->requireEdits(true);
  timer_ = std::make_unique<TimerWindowController>(session, static_cast<CommandTarget&>(*this), [] {});
  window_ = timerWindow();
  std::ignore = QTest::qWaitForWindowActive(window_);
}

void Desk::onDisk(const std::function<void(const ObjectContext&)>& look) const {
  const QString copy = places.path(QStringLiteral("Copy.pdr"));
  QFile::remove(copy);
  ASSERT_TRUE(QFile::copy(session.document()->path(), copy));
  ObjectContext read(session.objectModel(), clock, calendar);
  ASSERT_TRUE(read.open(copy));
  look(read);
}

void Desk::settle() {
  for (int turn = 0; turn < kTurns; ++turn) QCoreApplication::processEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Desk::during(const Steps& opening, Steps steps) {
  if (!steps) {
    opening();
    return settle();
  }
  bool done = false;
  QTimer::singleShot(0, qApp, [&done, steps = std::move(steps)] {
    QPointer<QWidget> sheet = QApplication::activeModalWidget();
    ASSERT_TRUE(sheet) << "no sheet has opened";
    sheet->activateWindow();
    std::ignore = eventually([&] { return QApplication::activeWindow() == sheet; });
    try {
      steps();
    } catch (const std::exception& failure) {
      ADD_FAILURE() << failure.what();
    }
    settle();
    done = true;
    if (!sheet || !sheet->isVisible()) return;
    ADD_FAILURE() << "the sheet is still open";
    sheet->close();
  });
  opening();
  settle();
  EXPECT_TRUE(done) << "no sheet has opened";
}

void Desk::type(const QString& text) {
  QTest::keyClicks(QApplication::focusWidget(), text);
  settle();
}

void Desk::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QWidget* focus = QApplication::focusWidget();
  QTest::keyClick(focus ? focus : &front(), key, modifiers);
  settle();
}

void Desk::press(const QString& button, Steps inSheet) {
  auto& widget = named<QAbstractButton>(button);
  std::ignore = eventually([&] { return !widget.size().isEmpty(); });  // a notice slides in
  // A radio button is as wide as its line, and only its sign and words can be clicked.
  const auto* radio = qobject_cast<QRadioButton*>(&widget);
  const QPoint place = radio ? QPoint(radio->height() / 2, radio->height() / 2) : widget.rect().center();
  during([&] { QTest::mouseClick(&widget, Qt::LeftButton, {}, place); }, std::move(inSheet));
}

void Desk::go(const QString& field) {
  named(field).setFocus(Qt::MouseFocusReason);
  settle();
}

void Desk::typeInto(const QString& field, const QString& text) {
  go(field);
  press(Qt::Key_A, Qt::ControlModifier);
  press(Qt::Key_Delete);
  if (!text.isEmpty()) type(text);
}

void Desk::select(const QString& table, int row) {
  auto& view = named<RowTableView>(table);
  // A sheet that has closed leaves the keyboard to nobody here, where no desktop gives it back.
  if (!view.window()->isActiveWindow()) {
    view.window()->activateWindow();
    std::ignore = eventually([&] { return view.window()->isActiveWindow(); });
  }
  int column = 0;  // the first that does nothing else
  while (actsOnPress(view.tableModel().head(column).kind)) ++column;
  QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                    view.visualRect(view.model()->index(row, column)).center());
  settle();
}

void Desk::pressCell(const QString& table, int row, const QString& column, Steps inSheet) {
  auto& view = named<RowTableView>(table);
  const QPoint place = view.visualRect(index(table, row, column)).center();
  during([&] { QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place); }, std::move(inSheet));
}

void Desk::editCell(const QString& table, int row, const QString& column) {
  auto& view = named<RowTableView>(table);
  view.setFocus();
  view.setCurrentIndex(index(table, row, column));
  view.edit(view.currentIndex());
  settle();
}

void Desk::command(Command command, Steps inSheet) {
  during([&] { perform(command, &front()); }, std::move(inSheet));
}

void Desk::showList(std::unique_ptr<ListEditorWindow> (&make)(const WindowFrame&)) {
  list_ = make({session, *this});
  list_->bringToFront();
}

void Desk::wait(double seconds) {
  clock.advance(seconds);
  if (!modals.isModal()) timer_->state().updateTimeDisplay();
}

QWidget& Desk::front() const {
  if (QWidget* sheet = QApplication::activeModalWidget()) return *sheet;
  QWidget* active = QApplication::activeWindow();
  return active && active->isVisible() ? *active : *window_;
}

QString Desk::text(const QString& field) const {
  const QWidget& widget = named(field);
  if (const auto* box = qobject_cast<const QComboBox*>(&widget)) return box->currentText();
  if (const auto* line = qobject_cast<const QLineEdit*>(&widget)) return line->text();
  if (const auto* note = qobject_cast<const QPlainTextEdit*>(&widget)) return note->toPlainText();
  return static_cast<const QLabel&>(widget).text();
}

QString Desk::description(const QString& name) const { return named(name).accessibleDescription(); }
bool Desk::isEnabled(const QString& name) const { return named(name).isEnabled(); }
bool Desk::isChecked(const QString& box) const { return named<QAbstractButton>(box).isChecked(); }

QStringList Desk::offered(const QString& field) const {
  auto& box = named<QComboBox>(field);
  box.showPopup();
  QStringList names;
  for (int item = 0; item < box.count(); ++item) names << box.itemText(item);
  box.hidePopup();
  return names;
}

bool Desk::sees(const QString& name) const {
  const auto widgets = front().findChildren<QWidget*>();
  return std::any_of(widgets.begin(), widgets.end(), [&](const QWidget* widget) {
    return widget->accessibleName() == name && widget->isVisible();
  });
}

QString Desk::focus() const {
  const QWidget* widget = QApplication::focusWidget();
  return widget ? widget->accessibleName() : QString();
}

int Desk::rows(const QString& table) const { return named<RowTableView>(table).model()->rowCount(); }
int Desk::selectedRow(const QString& table) const { return named<RowTableView>(table).selectedRow(); }

QModelIndex Desk::index(const QString& table, int row, const QString& column) const {
  const QAbstractItemModel& model = *named<RowTableView>(table).model();
  for (int section = 0; section < model.columnCount(); ++section) {
    const auto says = [&](Qt::ItemDataRole role) {
      return model.headerData(section, Qt::Horizontal, role).toString() == column;
    };
    if (says(Qt::DisplayRole) || says(Qt::AccessibleTextRole)) return model.index(row, section);
  }
  ADD_FAILURE() << table.toStdString() << " has no column " << column.toStdString();
  return {};
}

QString Desk::cell(const QString& table, int row, const QString& column) const {
  return index(table, row, column).data().toString();
}

QString Desk::row(const QString& table, int row) const {
  const QAbstractItemModel& model = *named<RowTableView>(table).model();
  QStringList cells;
  for (int section = 0; section < model.columnCount(); ++section) {
    cells << model.index(row, section).data(Qt::AccessibleTextRole).toString();
  }
  cells.removeAll(QString());
  return cells.join(u' ');
}

QStringList Desk::notices() const {
  QStringList texts;
  for (const Notice& notice : const_cast<Session&>(session).notices().standing()) texts << notice.text;
  return texts;
}

void Desk::perform(Command command, QWidget*) {
  switch (command) {
    case Command::QuickEntry:
      return timer_->quickEntry();
    case Command::AddActivity:
      return timer_->addActivity();
    case Command::EditActivity:
      return timer_->editActivity();
    case Command::EditSelected:
      return timer_->editSelected();
    case Command::Delete:
      return timer_->deleteActivity();
    case Command::Find:
      return timer_->find();
    case Command::ToggleTimer:
      return timer_->state().toggleTimer();
    case Command::StartEarlier:
      return askWhenEarlier(session, timer_->state().currentActivity(), EarlierDeed::Start, window_);
    case Command::StopEarlier:
      return askWhenEarlier(session, timer_->state().currentActivity(), EarlierDeed::Stop, window_);
    case Command::MarkComplete:
      return timer_->state().markSelectedCompleted();
    case Command::MakeCurrent:
      return timer_->state().makeCurrent();
    case Command::MarkUnsent:
      return timer_->state().log().markSelectedUnsent();
    case Command::CustomerList:
      return showList(makeCustomerList);
    case Command::ServicesList:
      return showList(makeServicesList);
    default:
      ADD_FAILURE() << "nobody at the desk carries out this command";
  }
}

}  // namespace pendra
