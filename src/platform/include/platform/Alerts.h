#pragma once
// Two kinds of question: an application-modal alert stops the program's ticking until it is answered; a
// sheet on a window lets everything go on and calls back.

#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <functional>

namespace pendra {

/// The texts of one alert. All are plain text.
struct Alert {
  enum class Style {
    Warning,
    Informational,
    Critical,  ///< with several buttons: the first destroys something
  };
  /// Whose window a sheet hangs on. One that asks about what a window shows belongs to that window.
  enum class Owner { FrontWindow, TimerWindow };
  /// What the help book has a chapter about.
  enum class Topic { None, VantorNotFound, FirstSending, HeldBack, UnknownFate, Backups, Deleting };

  Style style = Style::Warning;
  QString message;
  QString informative;  ///< empty when the alert has none
  /// The affirmative one first, the one that turns back last.
  QStringList buttons{QCoreApplication::translate("pendra", "OK")};
  bool returnCancels = false;  ///< whether Return answers the last button instead of the first
  Owner owner = Owner::FrontWindow;
  Topic topic = Topic::None;
};

/// What an alert answers for its first button; the next ones count up from it.
inline constexpr int kFirstButton = 1000;
inline constexpr int kSecondButton = 1001;

/// Shows alerts. Escape and the close box answer the last button.
class Alerts {
 public:
  virtual ~Alerts() = default;
  /// Shows an application-modal alert and returns the chosen button, kFirstButton + its index.
  virtual int runAlert(const Alert& alert) = 0;
  /// Shows an alert as a sheet of its owner, which comes to the front. `answered` is called with the chosen
  /// button, unless the window dies first; it may be empty. Nothing is asked where the owner is not open, or
  /// where another sheet of it must be answered first.
  virtual void beginSheet(const Alert& alert, std::function<void(int)> answered) = 0;
};

}  // namespace pendra
