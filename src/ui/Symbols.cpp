#include "ui/Symbols.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPen>
#include <QPixmapCache>
#include <QPolygonF>
#include <QSvgRenderer>

#include "platform/Text.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

QString fileOf(Symbol symbol) {
  switch (symbol) {
    case Symbol::Play:
      return QStringLiteral(":/images/play_button_enhanced.svg");
    case Symbol::Pause:
      return QStringLiteral(":/images/pause_button_enhanced.svg");
    case Symbol::CheckOn:
      return QStringLiteral(":/images/CheckBox_SmallControl_Selected.svg");
    case Symbol::CheckOff:
      return QStringLiteral(":/images/CheckBox_SmallControl_Unselected.svg");
    case Symbol::Notes:
      return QStringLiteral(":/images/Notesbox.svg");
    case Symbol::Warning:
      return QStringLiteral(":/images/warning.svg");
    case Symbol::Search:
      return QStringLiteral(":/images/search.svg");
    case Symbol::Cross:
      return QStringLiteral(":/images/cross.svg");
    case Symbol::Calendar:
      return QStringLiteral(":/images/calendar.svg");
    case Symbol::Away:
      return QStringLiteral(":/images/away.svg");
    case Symbol::Information:
      return QStringLiteral(":/images/information.svg");
  }
  return {};
}

QString drawingOfIcon(int size) {
  return QStringLiteral(":/icons/%1x%1/apps/com.corvel.pendra.svg").arg(size);
}

QPixmap tinted(Symbol symbol, const QSize& pixels, const QColor& colour) {
  const QString key = formatted(u"pendra/%@/%@x%@/%@", {fileOf(symbol), QString::number(pixels.width()),
                                                        QString::number(pixels.height()), colour.name()});
  QPixmap pixmap;
  if (QPixmapCache::find(key, &pixmap)) return pixmap;
  pixmap = QPixmap(pixels);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  QSvgRenderer(fileOf(symbol)).render(&painter);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(pixmap.rect(), colour);
  painter.end();
  QPixmapCache::insert(key, pixmap);
  return pixmap;
}

class Chevron final : public QIconEngine {
 public:
  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const Colours& colours = Theme::colours(QGuiApplication::palette());
    drawChevron(*painter, QRectF(rect).center(), mode == QIcon::Disabled ? colours.disabled : colours.quiet);
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, pixmap.rect(), mode, state);
    return pixmap;
  }
  [[nodiscard]] QIconEngine* clone() const override { return new Chevron; }
};

}  // namespace

void drawSymbol(QPainter& painter, const QRectF& rect, Symbol symbol, const QColor& colour) {
  const qreal scale = painter.device()->devicePixelRatio();
  const QPixmap pixmap = tinted(symbol, (rect.size() * scale).toSize(), colour);
  painter.drawPixmap(rect, pixmap, QRectF(pixmap.rect()));
}

void drawChevron(QPainter& painter, const QPointF& centre, const QColor& colour) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colour, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPolyline(
      QPolygonF{centre + QPointF(-3.5, -1.75), centre + QPointF(0, 1.75), centre + QPointF(3.5, -1.75)});
  painter.restore();
}

QIcon chevronIcon() { return QIcon(new Chevron); }

QIcon programIcon() { return QIcon(drawingOfIcon(128)); }

QIcon windowIcon() {
  QIcon icon;
  for (const int size : {16, 22, 48, 128}) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QSvgRenderer(drawingOfIcon(size)).render(&painter);
    icon.addPixmap(pixmap);
  }
  return icon;
}

}  // namespace pendra
