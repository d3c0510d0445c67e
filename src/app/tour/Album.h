#pragma once

#include <QDir>
#include <functional>

class QWidget;

namespace pendra {

/// Takes pictures of windows into a folder, in both looks and at scale 1 and 2: "NAME-dark@2x.png".
class Album {
 public:
  explicit Album(const QString& folder) : folder_(folder) {}

  void take(const QString& name, QWidget& window);
  /// The sheet that `open` opens and does not return from; it is cancelled.
  void takeSheet(const QString& name, const std::function<void()>& open);
  /// Writes a text beside the pictures.
  void write(const QString& name, const QString& text);
  /// Whether every picture was written.
  [[nodiscard]] bool isComplete() const { return isComplete_; }

 private:
  void save(const QString& name, QWidget& window);

  QDir folder_;
  bool isComplete_ = true;
};

/// The visible window of that title, without which there is no tour.
[[nodiscard]] QWidget& windowTitled(const QString& title);

}  // namespace pendra
