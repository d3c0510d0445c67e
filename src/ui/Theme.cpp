#include "ui/Theme.h"

#include <QApplication>
#include <QFontDatabase>
#include <QScreen>
#include <cmath>

#include "AdaptedColours.h"
#include "PendraStyle.h"
#include "platform/Preferences.h"
#include "ui/Symbols.h"

namespace pendra {

namespace {

constexpr double kReadable = 4.5;
constexpr qreal kHeadPoints = 9;        // 12 pixels on a usual screen
constexpr qreal kControlPoints = 9.75;  // 13 pixels
constexpr qreal kTimePoints = 30;       // 40 pixels
constexpr qreal kLowTimePoints = 27;    // 36 pixels
constexpr qreal kLabelPoints = 12;
constexpr qreal kUnchosenPoints = 9;  // what Qt falls back to when no desktop says
constexpr qreal kBodyPoints = 11;

Appearance forced = Appearance::System;
Wishes desktop;
double textScale = 1;

/// Both looks as they are worn.
struct Worn {
  Colours light = adapted(Theme::light(), desktop);
  Colours dark = adapted(Theme::dark(), desktop);
};

Worn& worn() {
  static Worn both;
  return both;
}

/// An X server's resolution may have the letters as large as the desktop said at first, and with them all
/// else; there only what it says after that is left to do.
double textScaleOf(const Wishes& look) {
  static std::optional<double> before;
  const double wished = look.textScale.value_or(1);
  const bool isServers = QGuiApplication::platformName() == u"xcb" &&
                         !qFuzzyCompare(QGuiApplication::primaryScreen()->devicePixelRatio(), 1);
  if (!isServers) return wished;
  if (!before) before = look.textScale;
  return wished / before.value_or(wished);
}

/// Qt hands a font down to whoever has none; whoever has a size of its own keeps it.
void growBy(double factor) {
  QApplication::setFont(Theme::controlFont());
  for (QWidget* widget : QApplication::allWidgets()) {
    QFont font = widget->font();
    if (!widget->testAttribute(Qt::WA_SetFont) || (font.resolveMask() & QFont::SizeResolved) == 0) continue;
    font.setPointSizeF(font.pointSizeF() * factor);
    widget->setFont(font);
  }
}

/// The desktop's own font; where no desktop chose one, a face made for screens in a readable size.
QFont usualFont() {
  static const QFont font = [] {
    QFont body = QApplication::font();
    if (body.family() == u"Sans Serif") {
      if (QFontDatabase::hasFamily(QStringLiteral("Inter"))) body.setFamily(QStringLiteral("Inter"));
      if (body.pointSizeF() <= kUnchosenPoints) body.setPointSizeF(kBodyPoints);
    }
    if (body.pointSizeF() <= 0) body.setPointSizeF(kBodyPoints);
    return body;
  }();
  return font;
}

/// A size of the scale, growing with a desktop whose own type is larger than usual.
QFont scaled(qreal points) {
  return Theme::sized(points * std::max(1.0, usualFont().pointSizeF() / (kBodyPoints + 1)));
}

double luminance(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

}  // namespace

void Theme::install(QApplication& application) {
  QApplication::setStyle(new PendraStyle);
  QApplication::setFont(controlFont());
  application.setPalette(QPalette());
  QApplication::setWindowIcon(windowIcon());
}

void Theme::force(Appearance appearance) {
  forced = appearance;
  QApplication::setPalette(QPalette());
}

void Theme::follow(const Wishes& look) {
  desktop = look;
  worn() = Worn();
  QApplication::setPalette(QPalette());
  const double before = std::exchange(textScale, textScaleOf(look));
  if (!qFuzzyCompare(before, textScale)) growBy(textScale / before);
}

int Theme::motion(int milliseconds) { return desktop.lessMotion ? 0 : milliseconds; }

void Theme::force(const UserDefaults& defaults) {
  const QString chosen = defaults.text(preferences::kAppearance).value_or(QString());
  force(chosen == u"light" ? Appearance::Light : chosen == u"dark" ? Appearance::Dark : Appearance::System);
}

bool Theme::isDark(const QPalette& palette) { return palette.color(QPalette::Window).lightness() < 128; }

const Colours& Theme::colours(const QPalette& palette) {
  return isDark(palette) ? worn().dark : worn().light;
}

const Colours& Theme::light() {
  static const Colours colours{.window = 0xf7f7f8,
                               .base = 0xffffff,
                               .text = 0x1d1f23,
                               .quiet = 0x5f646c,
                               .line = 0xe6e8eb,
                               .dayLine = 0xc9ced5,
                               .frame = 0x878d96,
                               .running = 0x1a7046,
                               .runningRow = 0xeaf5ef,
                               .runningLine = 0xbfe0cd,
                               .link = 0x1b5cad,
                               .filled = 0x1b5cad,
                               .selection = 0xdbe8f8,
                               .hover = 0xf3f5f8,
                               .notice = 0x664e00,
                               .noticeBack = 0xfff6dc,
                               .noticeLine = 0xe6d493,
                               .warning = 0xb3261e,
                               .disabled = 0x868c94,
                               .report = {0x33417a, 0x6b4b93, 0xa0528c, 0xbf6884, 0x9a7657, 0x868c95}};
  return colours;
}

const Colours& Theme::dark() {
  static const Colours colours{.window = 0x232528,
                               .base = 0x1b1d20,
                               .text = 0xe8eaed,
                               .quiet = 0xa6acb4,
                               .line = 0x303338,
                               .dayLine = 0x454a51,
                               .frame = 0x757b85,
                               .running = 0x4cc38a,
                               .runningRow = 0x1b3127,
                               .runningLine = 0x2d5742,
                               .link = 0x8abaf4,
                               .filled = 0x3371c4,
                               .selection = 0x2b3b52,
                               .hover = 0x26292d,
                               .notice = 0xf0dc9a,
                               .noticeBack = 0x3a3218,
                               .noticeLine = 0x5f5226,
                               .warning = 0xff9a90,
                               .disabled = 0x7d828a,
                               .report = {0xb3bdf2, 0xb393dc, 0xcf82b6, 0xd3788e, 0xb78a63, 0x8b919a}};
  return colours;
}

QPalette Theme::palette(const QPalette& ofDesktop) {
  const bool wantsDark =
      forced == Appearance::System ? desktop.isDark.value_or(isDark(ofDesktop)) : forced == Appearance::Dark;
  const Colours& colours = wantsDark ? worn().dark : worn().light;
  QPalette result(colours.text, colours.base, mixed(colours.base, colours.line, 0.5), colours.line,
                  colours.quiet, colours.text, colours.text, colours.base, colours.window);
  result.setColor(QPalette::AlternateBase, colours.window);
  result.setColor(QPalette::Highlight, colours.selection);
  result.setColor(QPalette::HighlightedText, colours.text);
  result.setColor(QPalette::Link, colours.link);
  result.setColor(QPalette::LinkVisited, colours.link);
  result.setColor(QPalette::PlaceholderText, colours.quiet);
  result.setColor(QPalette::ToolTipBase, colours.base);
  result.setColor(QPalette::ToolTipText, colours.text);
  result.setColor(QPalette::Shadow, wantsDark ? QColor(0x101113) : QColor(0xc4c8ce));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                          QPalette::HighlightedText, QPalette::PlaceholderText}) {
    result.setColor(QPalette::Disabled, role, colours.disabled);
  }
  result.setColor(QPalette::Disabled, QPalette::Base, colours.window);
  return result;
}

QFont Theme::sized(qreal points) {
  QFont font = usualFont();
  font.setPointSizeF(points * textScale);
  return font;
}

QFont Theme::cellFont() { return sized(usualFont().pointSizeF()); }
QFont Theme::controlFont() { return scaled(kControlPoints); }
QFont Theme::quietFont() { return scaled(kHeadPoints); }

QFont Theme::timeFont(bool runs, bool low) {
  QFont font = sized(low ? kLowTimePoints : kTimePoints);
  font.setWeight(runs ? QFont::DemiBold : QFont::Normal);
  return font;
}

QFont Theme::labelFont() { return sized(kLabelPoints); }
int Theme::wide(int points) { return static_cast<int>(std::lround(points * textScale)); }

double Theme::contrast(const QColor& a, const QColor& b) {
  const double one = luminance(a) + 0.05;
  const double other = luminance(b) + 0.05;
  return std::max(one, other) / std::min(one, other);
}

QColor Theme::readable(const QColor& colour, const QColor& background, const QColor& text) {
  for (double part = 0; part < 1; part += 0.1) {
    const QColor candidate = mixed(colour, text, part);
    if (contrast(candidate, background) >= kReadable) return candidate;
  }
  return text;
}

QColor mixed(const QColor& a, const QColor& b, double part) {
  const auto between = [part](int from, int to) {
    return static_cast<int>(std::lround(from + (to - from) * part));
  };
  return {between(a.red(), b.red()), between(a.green(), b.green()), between(a.blue(), b.blue())};
}

}  // namespace pendra
