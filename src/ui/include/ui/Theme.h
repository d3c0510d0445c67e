#pragma once
// Colours are named by what they say, not by how they look: green says "running" and nothing else, blue is a
// way to act, yellow a notice. A widget asks for the colours of its own palette, so that it follows the
// desktop between light and dark without being told.

#include <QColor>
#include <QFont>
#include <QPalette>
#include <array>

class QApplication;

namespace pendra {

class UserDefaults;
struct Wishes;

/// Which of the two looks the program wears.
enum class Appearance { System, Light, Dark };

/// The colours of one look.
struct Colours {
  QColor window;
  QColor base;
  QColor text;
  QColor quiet;  ///< secondary words, what was sent
  QColor line;
  QColor dayLine;  ///< between two days of a table
  QColor frame;    ///< around fields, buttons and signs
  QColor running;
  QColor runningRow;
  QColor runningLine;
  QColor link;
  QColor filled;  ///< the one filled button of a window
  QColor selection;
  QColor hover;
  QColor notice;
  QColor noticeBack;
  QColor noticeLine;
  QColor warning;  ///< what will be wrong: a count over its limit, a text that cannot be read, a deletion
  QColor disabled;
  std::array<QColor, 6> report;  ///< the groups of a report, the longest first; the last one is all others
};

/// The measures that every window shares.
namespace metrics {
inline constexpr int kGrid = 8;
inline constexpr int kSide = 16;
inline constexpr int kRowHeight = 32;
inline constexpr int kHeadHeight = 28;
inline constexpr int kFooter = 40;
inline constexpr int kCellPadding = 8;
inline constexpr int kRadius = 6;
inline constexpr int kControlHeight = 28;
inline constexpr int kButtonHeight = 32;
inline constexpr int kFocusRing = 3;  ///< two points of ring and one of air, around a button
}  // namespace metrics

/// The one look of the program.
class Theme {
 public:
  /// Gives the application its style, palette, fonts and icon. Called once, before the first window.
  static void install(QApplication& application);
  /// Wears one look whatever the desktop wears; open windows follow with the next events.
  static void force(Appearance appearance);
  /// Wears what the desktop says that it looks like; open windows follow as well.
  static void follow(const Wishes& look);
  /// How long something moves, of what it would on a desktop that asks for nothing.
  [[nodiscard]] static int motion(int milliseconds);

  /// Wears the look that the user has chosen in the preferences.
  static void force(const UserDefaults& defaults);

  [[nodiscard]] static bool isDark(const QPalette& palette);
  /// As they are worn, with what the desktop wishes.
  [[nodiscard]] static const Colours& colours(const QPalette& palette);
  [[nodiscard]] static const Colours& light();
  [[nodiscard]] static const Colours& dark();
  /// The look that the desktop's palette asks for, or the forced one.
  [[nodiscard]] static QPalette palette(const QPalette& ofDesktop);

  [[nodiscard]] static QFont cellFont();     ///< the desktop's body size
  [[nodiscard]] static QFont controlFont();  ///< fields, buttons, labels
  [[nodiscard]] static QFont quietFont();    ///< heads and quiet words
  /// The large elapsed time. Its weight says that it runs; it is smaller in a low window.
  [[nodiscard]] static QFont timeFont(bool runs = true, bool low = false);
  [[nodiscard]] static QFont labelFont();  ///< what the large time is of
  /// The desktop's face in a size of its own, where letters are as large as usual.
  [[nodiscard]] static QFont sized(qreal points);
  /// The room of what is `points` wide where letters are as large as usual.
  [[nodiscard]] static int wide(int points);

  /// How far two colours stand apart, from 1 to 21.
  [[nodiscard]] static double contrast(const QColor& a, const QColor& b);
  /// `colour`, moved towards `text` until it can be read on `background` (contrast 4.5).
  [[nodiscard]] static QColor readable(const QColor& colour, const QColor& background, const QColor& text);
};

/// The colour `part` of the way from `a` to `b`.
[[nodiscard]] QColor mixed(const QColor& a, const QColor& b, double part);

}  // namespace pendra
