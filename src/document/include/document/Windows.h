#pragma once
// What the document's operations ask of windows that live in higher layers. The list is closed: each
// interface names its callers.

namespace pendra {

/// The interfaces that can be loaded. Their owner is always the application delegate.
enum class Interface { TimerWindow, Setup, CustomerList, ServicesList, WelcomeController, AboutBox };

/// Loads windows. Called by launch, open, new, setup, backup and list synchronisation.
class InterfaceLoader {
 public:
  virtual ~InterfaceLoader() = default;
  /// Makes and shows the window, which enters itself in the session.
  virtual void load(Interface interface) = 0;
};

/// The timer window. Called by opening and closing.
class MainWindow {
 public:
  virtual ~MainWindow() = default;
  virtual void show() = 0;
  /// Closes without asking; `closeAfterWindow` runs, and the window leaves the session.
  virtual void close() = 0;
  /// Stops the window's usage statistics.
  virtual void invalidateTracker() = 0;
};

/// A window beside the timer window: setup, the list editors, welcome. Called by closing and setup. It leaves
/// the session when it closes.
class AuxiliaryWindow {
 public:
  virtual ~AuxiliaryWindow() = default;
  virtual void close() = 0;
  virtual void bringToFront() = 0;
  /// Stores what is being typed; false when it was refused, which the user has been told. Called by closing.
  [[nodiscard]] virtual bool finishEditing() { return true; }
};

}  // namespace pendra
