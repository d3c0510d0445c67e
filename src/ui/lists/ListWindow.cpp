#include "ListWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>

#include "ui/Buttons.h"
#include "ui/MenuBar.h"
#include "ui/NoticeLine.h"
#include "ui/RowTableView.h"
#include "ui/Theme.h"
#include "ui_ListWindow.h"

namespace pendra {

ListWindow::ListWindow(const WindowParts& parts, AuxiliaryWindow* Session::*place, ListWords words)
    : session_(parts.session),
      place_(place),
      words_(std::move(words)),
      ui_(std::make_unique<Ui::ListWindow>()) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(words_.title);
  auto* content = new QWidget(this);
  ui_->setupUi(content);
  setCentralWidget(content);
  ui_->column->insertWidget(1, new NoticeLine(session_.notices(), content));
  setMenuBar(new MenuBar(parts.menus, parts.commands, this));
  resize(content->geometry().size());
  session_.*place_ = this;
}

ListWindow::~ListWindow() {
  table().setModel(nullptr);  // the rows go before the view
  if (session_.*place_ == this) session_.*place_ = nullptr;
}

void ListWindow::awakeFromNib(std::unique_ptr<ListController> controller) {
  controller_ = std::move(controller);
  ui_->myTableView->setAccessibleName(words_.table);
  ui_->plusButton->setText(words_.add);
  ui_->plusButton->setAccessibleName(words_.addAccessible);
  makePrimary(*ui_->plusButton);
  makeQuiet(*ui_->markAllButton);
  makeQuiet(*ui_->markNoneButton);
  for (QLabel* quiet : {ui_->linkedText, ui_->countText}) {
    quiet->setFont(Theme::quietFont());
    quiet->setForegroundRole(QPalette::PlaceholderText);
  }
  ui_->linkedText->setContentsMargins(0, -metrics::kSide, 0, 0);
  connectTable();
  connectButtons();
  controller_->awakeFromNib();
  ui_->searchString->setFocus();
}

void ListWindow::connectTable() {
  RowTableView& view = table();
  view.setSource(controller_->source());
  view.tableModel().setEditRules({.setObjectValue = [this](const QString& value, const QString& identifier,
                                                           int row) { storeText(value, identifier, row); }});
  view.installEventFilter(this);
  connect(&view, &RowTableView::cellPressed, this, [this](int row, const QString& identifier) {
    const int column = table().tableModel().columnOf(identifier);
    controller_->setObjectValue(!controller_->source().isChecked(row, column), identifier, row);
  });
  connect(&view, &RowTableView::rowActivated, this, &ListWindow::editName);
  connect(&view, &RowTableView::selectionDidChange, this, &ListWindow::updateButtons);
  connect(&view, &RowTableView::emptyButtonClicked, this, &ListWindow::addNew);
  connect(view.model(), &QAbstractItemModel::modelReset, this, &ListWindow::showCounts);
}

void ListWindow::connectButtons() {
  connect(ui_->plusButton, &QPushButton::clicked, this, &ListWindow::addNew);
  connect(ui_->markAllButton, &QPushButton::clicked, this, &ListWindow::markAllShown);
  connect(ui_->markNoneButton, &QPushButton::clicked, this, &ListWindow::markNoneShown);
  connect(ui_->searchString, &QLineEdit::textChanged, this, &ListWindow::search);
  ui_->searchString->installEventFilter(this);
}

RowTableView& ListWindow::table() const { return *ui_->myTableView; }
QPushButton& ListWindow::addJobButton() const { return *ui_->addJobButton; }

void ListWindow::close() { QMainWindow::close(); }

void ListWindow::bringToFront() {
  show();
  raise();
  activateWindow();
}

void ListWindow::closeEvent(QCloseEvent* event) {
  session_.*place_ = nullptr;
  event->accept();
}

void ListWindow::search(const QString& text) {
  controller_->setSearchString(text);
  showCounts();
}

void ListWindow::showCounts() {
  const int rows = controller_->numberOfRowsInTableView();
  const bool searching = !controller_->searchString().isEmpty();
  ui_->countText->setText(rows == 0 ? QString() : tr("%n listed", nullptr, rows));
  if (searching) {
    table().setEmptyState(tr("Nothing here contains “%1”.").arg(controller_->searchString()));
  } else if (controller_->standalone()) {
    table().setEmptyState(words_.empty, QString(words_.add).remove(u'&'));
  } else {
    table().setEmptyState(words_.emptyLinked);
  }
  ui_->markAllButton->setEnabled(rows > 0);
  ui_->markNoneButton->setEnabled(rows > 0);
  updateButtons();
}

void ListWindow::standaloneDidChange() {
  const bool standalone = controller_->standalone();
  ui_->plusButton->setVisible(standalone);
  ui_->linkedText->setHidden(standalone);
  showCounts();
}

void ListWindow::updateButtons() {
  ui_->addJobButton->setEnabled(controller_->validateMenuItem(ListCommand::AddNewJob));
}

/// A text that is only left, not changed, is no edit: leaving the editor must not ask anything. What is an
/// edit is stored once the editor has closed, because storing may sort the rows away under it, or ask.
void ListWindow::storeText(const QString& value, const QString& identifier, int row) {
  const int column = table().tableModel().columnOf(identifier);
  const QWidget* focus = QApplication::focusWidget();
  const bool leaving = !focus || !table().viewport()->isAncestorOf(focus);
  if (leaving && value == controller_->source().text(row, column)) return;
  const auto store = [this, value, identifier, row] { controller_->setObjectValue(value, identifier, row); };
  QMetaObject::invokeMethod(this, store, Qt::QueuedConnection);
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
  const TableSource& source = controller_->source();
  for (int column = 0; column < source.columnCount(); ++column) {
    if (controller_->shouldEditTableColumn(column, row))
      return table().editCell(source.head(column).identifier, row);
  }
}

bool ListWindow::keyInTable(int key) {
  const int row = table().currentIndex().row();
  if (row < 0) return false;
  switch (key) {
    case Qt::Key_Space:
      table().pressCell(table().model()->index(row, controller_->source().columnCount() - 1));
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
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (watched == &table() && keyInTable(key)) return true;
    if (watched == ui_->searchString && key == Qt::Key_Down) {
      table().setFocus();
      if (table().selectedRow() < 0) table().selectRow(0);
      return true;
    }
    if (watched == ui_->searchString && key == Qt::Key_Escape) {
      ui_->searchString->clear();
      return true;
    }
  }
  return QMainWindow::eventFilter(watched, event);
}

}  // namespace pendra
