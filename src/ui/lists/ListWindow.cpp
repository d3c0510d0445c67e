#include "ListWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QShortcut>

#include "platform/Translation.h"
#include "ui/Buttons.h"
#include "ui/CommandTarget.h"
#include "ui/RowTableView.h"
#include "ui/SearchField.h"
#include "ui/Theme.h"
#include "ui/WindowPlace.h"
#include "ui_ListWindow.h"

namespace pendra {

namespace {

/// How far a second list stands from the first.
constexpr int kStep = 40;

}  // namespace

ListWindow::ListWindow(const WindowFrame& frame, ListWords words)
    : ListEditorWindow(frame, words.title),
      session_(frame.session),
      target_(frame.target),
      words_(std::move(words)),
      ui_(std::make_unique<Ui::ListWindow>()) {
  auto* content = new QWidget(this);
  ui_->setupUi(content);
  setContent(content);
  resize(content->geometry().size());
  new WindowPlace(*this, session_.ports().defaults, words_.place);
  stepAside();
}

ListWindow::~ListWindow() {
  table().dropTable();  // the rows go before the view
}

/// Beside a list that stands open this one shows both title bars.
void ListWindow::stepAside() {
  for (const QWidget* other : QApplication::topLevelWidgets()) {
    if (other == this || !other->isVisible() || !qobject_cast<const ListWindow*>(other)) continue;
    const bool over = (pos() - other->pos()).manhattanLength() < kStep;
    if (!testAttribute(Qt::WA_Moved) || over) move(other->pos() + QPoint(kStep, kStep));
  }
}

void ListWindow::start(std::unique_ptr<ListController> controller) {
  controller_ = std::move(controller);
  ui_->activityTable->setAccessibleName(words_.table);
  setUpAdding(*ui_->plusButton, words_.add, words_.addAccessible, [this] { add(); });
  makePrimary(*ui_->plusButton);
  makeQuiet(*ui_->markAllButton);
  makeQuiet(*ui_->markNoneButton);
  for (QLabel* quiet : {ui_->linkedText, ui_->countText}) {
    quiet->setFont(Theme::quietFont());
    quiet->setForegroundRole(QPalette::PlaceholderText);
  }
  ui_->linkedText->setContentsMargins(metrics::kSide, 0, metrics::kSide, metrics::kGrid);
  connectTable();
  connectButtons();
  controller_->start();
  ui_->searchString->setFocus();
}

void ListWindow::connectTable() {
  RowTableView& view = table();
  view.setTable(controller_->table(), controller_->selection());
  view.tableModel().setEditRules({.setValue = [this](const QString& value, const QString& identifier,
                                                     int row) { takeText(value, identifier, row); }});
  view.installEventFilter(this);
  connect(&view, &RowTableView::cellPressed, this, [this](int row, const QString& identifier) {
    const TableModel& model = controller_->table();
    controller_->setShown(row, !model.isChecked(row, model.columnOf(identifier).value_or(-1)));
  });
  connect(&view, &RowTableView::rowActivated, this, &ListWindow::editName);
  connect(&view, &RowTableView::selectionChanged, this, &ListWindow::updateButtons);
  connect(&view, &RowTableView::emptyButtonClicked, this, [this] {
    if (controller_->standalone()) return add();
    target_.perform(Command::UpdateLists, this);
  });
  connect(&view, &RowTableView::emptyHelpClicked, this, [this] { target_.perform(Command::Help, this); });
  const QAbstractItemModel* model = view.model();
  connect(model, &QAbstractItemModel::modelReset, this, &ListWindow::showCounts);
  connect(model, &QAbstractItemModel::rowsInserted, this, &ListWindow::showCounts);
  connect(model, &QAbstractItemModel::rowsRemoved, this, &ListWindow::showCounts);
}

void ListWindow::connectButtons() {
  connect(ui_->markAllButton, &QPushButton::clicked, this, &ListWindow::markAllShown);
  connect(ui_->markNoneButton, &QPushButton::clicked, this, &ListWindow::markNoneShown);
  connect(ui_->searchString, &QLineEdit::textChanged, this, &ListWindow::search);
  ui_->searchString->installEventFilter(this);
  markAsSearch(*ui_->searchString);
  // First what was searched for goes, then the window.
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, [this] {
    if (ui_->searchString->text().isEmpty()) return void(close());
    ui_->searchString->clear();
    ui_->searchString->setFocus();
  });
}

/// The button's letter acts at once. By Qt's own way a button waits for a tenth of a second, and what is
/// typed meanwhile goes astray.
void ListWindow::setUpAdding(QPushButton& button, const QString& text, const QString& accessibleName,
                             const std::function<void()>& act) {
  button.setText(text);
  button.setAccessibleName(accessibleName);
  button.setShortcut({});
  connect(&button, &QPushButton::clicked, this, act);
  connect(new QShortcut(QKeySequence::mnemonic(text), this), &QShortcut::activated, &button, [&button, act] {
    if (button.isVisible() && button.isEnabled()) act();
  });
}

RowTableView& ListWindow::table() const { return *ui_->activityTable; }
QPushButton& ListWindow::addJobButton() const { return *ui_->addJobButton; }

void ListWindow::closeUnasked() {
  closesAnyway_ = true;
  close();
}

void ListWindow::closeEvent(QCloseEvent* event) {
  // A user whose name was refused goes on editing it.
  if (!takeEdit() && !closesAnyway_) return event->ignore();
  AppWindow::closeEvent(event);
}

void ListWindow::search(const QString& text) {
  controller_->setSearchString(text);
  table().showSelectionOrTop();
  showCounts();
}

void ListWindow::showCounts() {
  const int rows = controller_->table().rowCount();
  const bool open = session_.context() != nullptr;
  ui_->plusButton->setEnabled(open);
  const bool searching = !controller_->searchString().isEmpty();
  ui_->countText->setText(rows == 0 ? QString() : counted(rows, "1 listed", "%Ln listed"));
  if (!open) {
    table().setEmptyState(tr("No document is open."));
  } else if (searching) {
    table().setEmptyState(tr("Nothing here contains “%1”.").arg(controller_->searchString()));
  } else if (controller_->standalone()) {
    table().setEmptyState(words_.empty, QString(words_.add).remove(u'&'), tr("Read How It Works"));
  } else {
    table().setEmptyState(words_.emptyLinked, tr("Update Lists"), tr("Read How It Works"));
  }
  ui_->markAllButton->setEnabled(rows > 0);
  ui_->markNoneButton->setEnabled(rows > 0);
  updateButtons();
}

void ListWindow::standaloneChanged() {
  const bool standalone = controller_->standalone();
  ui_->plusButton->setVisible(standalone);
  ui_->linkedText->setHidden(standalone);
  showCounts();
}

void ListWindow::updateButtons() { ui_->addJobButton->setEnabled(controller_->canAddJob()); }

void ListWindow::add() {
  if (takeEdit()) addNew();
}

/// A command that came from another window is seen to act, and nothing is done over a name that was refused.
bool ListWindow::readyToAct() {
  if (!isActiveWindow()) bringToFront();
  return takeEdit();
}

void ListWindow::deleteRow() {
  if (!readyToAct()) return;
  const int row = table().selectedRow();
  controller_->deleteRow();
  // The next one moves up, so that the keyboard goes on where it was.
  const int last = controller_->table().rowCount() - 1;
  if (row >= 0 && last >= 0 && table().selectedRow() < 0) table().selectRow(std::min(row, last));
}

void ListWindow::markAllShown() {
  if (readyToAct()) controller_->markAllShown();
}

void ListWindow::markNoneShown() {
  if (readyToAct()) controller_->markNoneShown();
}

/// A text that is only left, not changed, is no edit: leaving the editor must not ask anything. What is an
/// edit is stored once the editor has closed, because storing may sort the rows away under it, or ask.
void ListWindow::takeText(const QString& value, const QString& identifier, int row) {
  const int column = controller_->table().columnOf(identifier).value_or(-1);
  const QWidget* focus = QApplication::focusWidget();
  const bool leaving = leaving_ || !focus || !table().viewport()->isAncestorOf(focus);
  if (leaving && value == controller_->table().text(row, column)) return;
  taken_ = {value, controller_->table().identity(row)};
  QMetaObject::invokeMethod(
      this, [this] { std::ignore = storeTaken(); }, Qt::QueuedConnection);
}

bool ListWindow::storeTaken() {
  if (!taken_) return true;
  const Taken taken = *std::exchange(taken_, std::nullopt);
  const auto row = controller_->table().rowWith(taken.identity);
  if (!row) return true;
  const bool stored = controller_->rename(*row, taken.value);
  table().scrollTo(table().currentIndex());
  return stored;
}

bool ListWindow::takeEdit() {
  const QScopedValueRollback leaving(leaving_, true);
  table().commitEditing();
  return storeTaken();
}

void ListWindow::editColumn(int column, int row) {
  const auto edit = [this, column, row] {
    const QModelIndex cell = table().model()->index(row, column);
    if (!cell.isValid() || !(cell.flags() & Qt::ItemIsEditable)) return;
    table().setFocus();
    table().setCurrentIndex(cell);
    table().edit(cell);
  };
  QMetaObject::invokeMethod(this, edit, Qt::QueuedConnection);
}

void ListWindow::editName(int row) {
  const TableModel& source = controller_->table();
  for (int column = 0; column < source.columnCount(); ++column) {
    if (source.isEditable(row, column)) return table().editCell(source.head(column).identifier, row);
  }
}

bool ListWindow::keyInTable(int key) {
  const int row = table().selectedRow();
  if (row < 0) return false;
  switch (key) {
    case Qt::Key_Space:
      table().pressCell(table().model()->index(row, controller_->table().columnCount() - 1));
      return true;
    case Qt::Key_F2:
      editName(row);
      return true;
    case Qt::Key_Delete:
      deleteRow();
      return true;
    default:
      return false;
  }
}

bool ListWindow::eventFilter(QObject* watched, QEvent* event) {
  const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
  const int key = isKey ? static_cast<QKeyEvent*>(event)->key() : 0;
  if (event->type() == QEvent::ShortcutOverride && watched == &table() && key == Qt::Key_Delete) {
    // In this table the key means this list, while the menu's command means the customers' when both are
    // open.
    event->accept();
    return true;
  }
  if (event->type() == QEvent::KeyPress) {
    if (watched == &table() && (!storeTaken() || keyInTable(key))) return true;
    if (watched == ui_->searchString && key == Qt::Key_Down) {
      table().setFocus();
      if (table().selectedRow() < 0) table().selectRow(0);
      return true;
    }
  }
  return AppWindow::eventFilter(watched, event);
}

}  // namespace pendra
