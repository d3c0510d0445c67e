#pragma once
// A name may be typed or picked. What is typed may be a name that does not exist yet, so a field is asked
// whether it may be left with its text; what the program writes into it is never asked about.

#include <QComboBox>
#include <functional>

class QCompleter;
class QStringListModel;

namespace pendra {

class NameEdit;

/// A combo box for a customer's, job's or service's name, with completion while typing and a veto of leaving.
class NameComboBox : public QComboBox {
  Q_OBJECT
 public:
  /// The rules, which belong to the editor that shows the field.
  struct Rules {
    std::function<QStringList()> names;  ///< the names to offer, asked for whenever they are needed
    std::function<bool()> mayLeave{};    ///< whether the field may be left with its text
    bool opensListWhileTyping = false;
  };

  explicit NameComboBox(QWidget* parent = nullptr);
  void setRules(Rules rules);

  [[nodiscard]] QString text() const { return currentText(); }
  /// Writes a text without asking or telling anybody.
  void setText(const QString& text);
  void showPopup() override;

 Q_SIGNALS:
  /// A person changed the text, by typing or by picking.
  void textEdited(const QString& text);
  /// A name was picked from the list, or typed and left, and is another one than before.
  void picked();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  /// Asks before Tab moves the focus: the answer may enable the very field that comes next.
  bool focusNextPrevChild(bool next) override;

 private:
  friend class NameEdit;

  void reloadItems();
  void typed(const QString& text);
  void complete(const QString& typedText);
  void openList(const QString& typedText);
  void closeList();
  void pick();
  /// Asks once; while the question stands, further attempts to leave are neither asked nor let through.
  [[nodiscard]] bool mayLeave();
  void leave();
  void takeFocusBack();

  Rules rules_;
  NameEdit* edit_;
  QCompleter* list_;
  QStringListModel* listItems_;
  QString pickedText_;
  bool asking_ = false;
  bool lettingGo_ = false;  ///< the question was answered with yes; the focus may go
  bool deleting_ = false;
};

}  // namespace pendra
