#include "AdaptedColours.h"

namespace pendra {

namespace {

constexpr double kLightTint = 0.16;
constexpr double kDarkTint = 0.28;
constexpr double kReadable = 4.5;

/// Dark enough for white text.
QColor forWhiteText(const QColor& accent) {
  for (double part = 0; part < 1; part += 0.05) {
    const QColor candidate = mixed(accent, Qt::black, part);
    if (Theme::contrast(candidate, Qt::white) >= kReadable) return candidate;
  }
  return Qt::black;
}

void takeAccent(Colours& colours, const QColor& accent) {
  const bool isDark = colours.base.lightness() < colours.text.lightness();
  colours.filled = forWhiteText(accent);
  colours.selection = mixed(colours.base, accent, isDark ? kDarkTint : kLightTint);
  colours.link = accent;
  for (const QColor& ground : {colours.base, colours.window, colours.runningRow, colours.selection}) {
    colours.link = Theme::readable(colours.link, ground, colours.text);
  }
}

/// Words nearer to the text's colour, lines and frames to be seen, grounds without a tint.
void takeContrast(Colours& colours) {
  const bool isDark = colours.base.lightness() < colours.text.lightness();
  colours.text = isDark ? Qt::white : Qt::black;
  colours.base = isDark ? Qt::black : Qt::white;
  colours.window = mixed(colours.base, colours.text, isDark ? 0.06 : 0.02);
  colours.line = mixed(colours.base, colours.text, 0.45);
  colours.dayLine = colours.frame = mixed(colours.base, colours.text, 0.75);
  colours.runningLine = colours.running;
  colours.noticeLine = colours.notice;
  colours.quiet = mixed(colours.quiet, colours.text, 0.6);
  colours.disabled = mixed(colours.disabled, colours.text, 0.35);
  for (QColor* word : {&colours.running, &colours.link, &colours.notice, &colours.warning}) {
    *word = mixed(*word, colours.text, 0.3);
  }
  colours.selection = mixed(colours.base, colours.link, 0.3);
}

}  // namespace

Colours adapted(const Colours& colours, const Wishes& look) {
  Colours result = colours;
  if (look.accent) takeAccent(result, QColor(QRgb(*look.accent)));
  if (look.highContrast) takeContrast(result);
  return result;
}

}  // namespace pendra
