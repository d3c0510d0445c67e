#pragma once
// What must be known by somebody who looks at no window of the program is told by the desktop.

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

class QDBusConnection;

namespace pendra {

class NoteService;

/// One thing that the desktop tells, until it is withdrawn or answered.
struct DesktopNote {
  QString key;  ///< the subject; a later note of one subject takes the place of the earlier
  QString title;
  QString text;
  QStringList actions;  ///< the titles of its buttons
  friend bool operator==(const DesktopNote&, const DesktopNote&) = default;
};

/// Has the desktop tell things.
class DesktopNotes {
 public:
  /// The note itself was pressed, not one of its buttons.
  static constexpr int kNoButton = -1;

  virtual ~DesktopNotes() = default;
  virtual void show(const DesktopNote& note) = 0;
  virtual void withdraw(const QString& key) = 0;

  /// Told which button of the note was pressed.
  std::function<void(const QString& key, int action)> pressed = [](const QString&, int) {};
};

/// The notification service of the user's session. Where there is none nothing is told, and nobody waits.
class SessionNotes final : public DesktopNotes {
 public:
  static std::unique_ptr<SessionNotes> ofUser();
  explicit SessionNotes(const QDBusConnection& session);
  ~SessionNotes() override;

  void show(const DesktopNote& note) override;
  void withdraw(const QString& key) override;

 private:
  std::unique_ptr<NoteService> service_;
};

}  // namespace pendra
