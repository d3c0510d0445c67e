#pragma once

#include <functional>
#include <memory>

#include "ui/ListWindows.h"
#include "ui_core/ListController.h"

class QPushButton;

namespace Ui {
class ListWindow;
}

namespace pendra {

class RowTableView;

/// The words of one of the two windows.
struct ListWords {
  QString title;
  QString table;  ///< the table's accessible name
  QString add;    ///< of the button that adds
  QString addAccessible;
  QString empty;        ///< what an empty list says when names can be typed
  QString emptyLinked;  ///< and when they come from Vantor
  QString place;        ///< the preference in which the window's place is kept
};

/// A window with a searchable list, kept by keyboard or mouse.
class ListWindow : public ListEditorWindow, public ListView {
  Q_OBJECT
 public:
  ~ListWindow() override;

  void closeUnasked() override;

  void deleteRow() override;
  [[nodiscard]] bool canDelete() const override { return controller_->canDelete(); }
  void markAllShown() override;
  void markNoneShown() override;

  [[nodiscard]] bool finishEditing() override { return takeEdit(); }

  void editColumn(int column, int row) override;
  void standaloneChanged() override;

 protected:
  ListWindow(const WindowFrame& frame, ListWords words);
  /// Called at the end of the constructor of the window that knows its controller.
  void start(std::unique_ptr<ListController> controller);

  virtual void addNew() = 0;

  void setUpAdding(QPushButton& button, const QString& text, const QString& accessibleName,
                   const std::function<void()>& act);

  [[nodiscard]] Session& session() const { return session_; }
  [[nodiscard]] RowTableView& table() const;
  [[nodiscard]] QPushButton& addJobButton() const;
  /// Opens the editor of the row's name.
  void editName(int row);
  /// Ends the editing of a name and stores it. False when the name was refused: then nothing else is done.
  [[nodiscard]] bool takeEdit();
  void updateButtons();

  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// A name that was typed and is yet to be stored. Its row may have moved by then.
  struct Taken {
    QString value;
    quint64 identity;
  };

  void stepAside();
  void connectTable();
  void connectButtons();
  void search(const QString& text);
  void showCounts();
  void add();
  [[nodiscard]] bool readyToAct();
  void takeText(const QString& value, const QString& identifier, int row);
  [[nodiscard]] bool storeTaken();
  bool keyInTable(int key);

  Session& session_;
  CommandTarget& target_;
  ListWords words_;
  std::unique_ptr<Ui::ListWindow> ui_;
  std::unique_ptr<ListController> controller_;
  std::optional<Taken> taken_;
  bool leaving_ = false;
  bool closesAnyway_ = false;  ///< the program closes the window, not the user
};

}  // namespace pendra
