#pragma once

#include <QLineEdit>
#include <functional>

namespace pendra {

/// A field for a date in words. A text that its reader cannot read is marked quietly once it stands, and
/// stops nobody.
class DateField : public QLineEdit {
  Q_OBJECT
 public:
  using Reader = std::function<bool(const QString& text)>;

  explicit DateField(QWidget* parent = nullptr);
  /// `canRead` is asked for texts that are not empty.
  void setReader(Reader canRead);
  [[nodiscard]] bool isUnreadable() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] bool canRead() const;
  void setUnreadable(bool unreadable);

  Reader reader_;
};

}  // namespace pendra
