#pragma once
// A name may be typed or picked. What is typed may be a name that does not exist yet, and stays open until
// whoever guards the field has accepted it; what the program writes into it is never asked about.

#include <QComboBox>
#include <functional>

class QCompleter;
class QStringListModel;

namespace pendra {

class NameEdit;

/// A combo box for a customer's, job's or service's name, with completion while typing.
class NameComboBox : public QComboBox {
  Q_OBJECT
 public:
  /// The rules, which belong to the editor that shows the field.
  struct Rules {
    std::function<QStringList()> names;  ///< the names to offer, asked for whenever they are needed
    bool opensListWhileTyping = false;
    QString whenEmpty{};  ///< what the list says when there is no name to offer
  };

  explicit NameComboBox(QWidget* parent = nullptr);
  void setRules(Rules rules);

  [[nodiscard]] QString text() const { return currentText(); }
  /// Writes a text without asking or telling anybody.
  void setText(const QString& text);
  /// Whether something was typed that was not accepted yet.
  [[nodiscard]] bool isTyped() const { return text() != settledText_; }
  /// What was typed may stand; it is reported as picked.
  void accept();
  void showPopup() override;

 Q_SIGNALS:
  /// A person changed the text, by typing or by picking.
  void textEdited(const QString& text);
  /// A name was picked from the list, or typed and accepted, and is another one than before.
  void picked();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  friend class NameEdit;

  void reloadItems();
  void sayThatItIsEmpty();
  void typed(const QString& text);
  void complete(const QString& typedText);
  void openList(const QString& typedText);
  void closeList();
  void pick();

  Rules rules_;
  NameEdit* edit_;
  QCompleter* list_;
  QStringListModel* listItems_;
  QString settledText_;  // what was written, picked or accepted last
  bool deleting_ = false;
};

}  // namespace pendra
