#pragma once

#include <QWidget>

class QHBoxLayout;

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

 private:
  void addPiece(const QString& title, const QString& path, bool isLast);

  QString path_;
  QHBoxLayout* row_;
};

}  // namespace pendra
