// The least that a program with a window does before it shows: startup.py measures Pendra's start beside it.

#include <QApplication>
#include <QHeaderView>
#include <QMainWindow>
#include <QStandardItemModel>
#include <QTableView>

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  constexpr int kRows = 100;
  constexpr int kColumns = 7;
  QStandardItemModel model(kRows, kColumns);
  for (int row = 0; row < kRows; ++row) {
    for (int column = 0; column < kColumns; ++column) {
      model.setItem(row, column, new QStandardItem(QString::number(row * column)));
    }
  }
  QMainWindow window;
  auto* table = new QTableView(&window);
  table->setModel(&model);
  window.setCentralWidget(table);
  window.resize(1120, 800);
  window.show();
  return QApplication::exec();
}
