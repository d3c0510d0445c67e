#pragma once

#include <QWidget>

class QHBoxLayout;
class QPushButton;

namespace pendra {

/// Shows a path as its pieces; a press on one reveals the file or folder that ends there. A long path shows
/// its last pieces.
class PathControl final : public QWidget {
  Q_OBJECT
 public:
  explicit PathControl(QWidget* parent = nullptr);

  void setPath(const QString& path);
  [[nodiscard]] const QString& path() const { return path_; }

 Q_SIGNALS:
  void pieceClicked(const QString& path);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void showPieces();
  [[nodiscard]] QPushButton* makePiece(const QString& title, const QString& path);

  QString path_;
  QHBoxLayout* row_;
};

}  // namespace pendra
