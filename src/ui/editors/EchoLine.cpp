#include "ui/EchoLine.h"

#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QPainter>
#include <optional>

#include "ui/Symbols.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kSign = 16;

std::optional<Symbol> signOf(Echo::Tone tone) {
  switch (tone) {
    case Echo::Tone::Information:
      return Symbol::Information;
    case Echo::Tone::Warning:
      return Symbol::Warning;
    case Echo::Tone::Running:
      return Symbol::Pause;
    default:
      return std::nullopt;
  }
}

QColor colourOf(Echo::Tone tone, const Colours& colours) {
  switch (tone) {
    case Echo::Tone::Warning:
    case Echo::Tone::Advice:
      return colours.warning;
    case Echo::Tone::Running:
      return colours.running;
    case Echo::Tone::Information:
    case Echo::Tone::Result:
      return colours.text;
    default:
      return colours.quiet;
  }
}

}  // namespace

EchoLine::EchoLine(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  hide();
}

void EchoLine::showEcho(const Echo& echo) {
  echo_ = echo;
  setText(echo.text);
  setAccessibleDescription(echo.text);
  setIndent(signOf(echo.tone) ? kSign + 6 : 0);
  setVisible(!echo.text.isEmpty());
  colour();
  update();
}

void EchoLine::paintEvent(QPaintEvent* event) {
  QLabel::paintEvent(event);
  const auto sign = signOf(echo_.tone);
  if (!sign) return;
  QPainter painter(this);
  drawSymbol(painter, QRectF(0, (height() - kSign) / 2.0, kSign, kSign), *sign,
             palette().color(QPalette::WindowText));
}

void EchoLine::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) colour();
}

void EchoLine::colour() {
  if (!parentWidget()) return;
  const QColor ink = colourOf(echo_.tone, Theme::colours(parentWidget()->palette()));
  QPalette own = palette();
  if (own.color(QPalette::WindowText) == ink) return;
  own.setColor(QPalette::WindowText, ink);
  setPalette(own);
}

void describeField(QWidget& field, const std::initializer_list<Echo>& echoes) {
  QStringList texts;
  for (const Echo& echo : echoes) {
    if (!echo.text.isEmpty()) texts << echo.text;
  }
  const QString text = texts.join(QStringLiteral(". "));
  field.setAccessibleDescription(text);
  // What is typed into has the focus, so it is what is read.
  if (auto* box = qobject_cast<QComboBox*>(&field); box && box->lineEdit()) {
    box->lineEdit()->setAccessibleDescription(text);
  }
}

}  // namespace pendra
