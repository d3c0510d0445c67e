#include "Album.h"

#include <QApplication>
#include <QDialog>
#include <QPixmap>
#include <QTimer>

#include "platform/Text.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

QPixmap pictureOf(QWidget& window, int scale) {
  QPixmap picture(window.size() * scale);
  picture.setDevicePixelRatio(scale);
  window.render(&picture);
  return picture;
}

/// What another text changes is passed on from layout to layout, a turn each, until the window has it.
void settleLayouts() {
  constexpr int kDeepest = 16;
  for (int turn = 0; turn < kDeepest; ++turn) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
  }
}

}  // namespace

void Album::take(const QString& name, QWidget& window) {
  Theme::force(Appearance::Light);
  save(name + u"-light", window);
  Theme::force(Appearance::Dark);
  save(name + u"-dark", window);
}

void Album::save(const QString& name, QWidget& window) {
  QCoreApplication::processEvents();
  settleLayouts();
  for (const auto& [scale, ending] : {std::pair(1, u".png"), std::pair(2, u"@2x.png")}) {
    isComplete_ &= pictureOf(window, scale).save(folder_.filePath(name + ending));
  }
}

void Album::takeSheet(const QString& name, const std::function<void()>& open) {
  bool taken = false;
  QTimer::singleShot(0, qApp, [&] {
    auto* sheet = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!sheet) return;
    take(name, *sheet);
    taken = true;
    sheet->reject();
  });
  open();
  isComplete_ &= taken;
}

void Album::write(const QString& name, const QString& text) {
  QFile file(folder_.filePath(name));
  const QByteArray bytes = text.toUtf8();
  isComplete_ &= file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QWidget& windowTitled(const QString& title) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->windowTitle() == title) return *window;
  }
  qFatal("no window is titled %s", qPrintable(title));
}

}  // namespace pendra
