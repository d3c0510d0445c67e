#pragma once
// What the document's operations ask of windows, which live in higher layers: by kind, never by a pointer, so
// that nobody holds a window that has gone.

namespace pendra {

/// The windows of the program; at most one of each kind is open.
enum class WindowKind {
  Timer,
  Setup,
  CustomerList,
  ServicesList,
  Welcome,
  About,
  Preferences,
  Restore,
  TimeAway,
  Report,
  CompletedActivities
};

/// Shows and closes windows. Called by launch, open, new, close and setup.
class Windows {
 public:
  virtual ~Windows() = default;
  /// Makes the window, or brings the one that is open to the front.
  virtual void show(WindowKind kind) = 0;
  [[nodiscard]] virtual bool isOpen(WindowKind kind) const = 0;
  /// Closes the window without asking, and does nothing where it is not open. With the timer window goes its
  /// document.
  virtual void close(WindowKind kind) = 0;
  /// Stores what is being typed in a list; false when it was refused, which the user has been told.
  [[nodiscard]] virtual bool finishEditing() = 0;
};

}  // namespace pendra
