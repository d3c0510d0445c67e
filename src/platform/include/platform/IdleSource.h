#pragma once
// How long nobody has touched the machine is known to the session: to its compositor, its screen saver, or
// the login service. Which of them is there differs from desktop to desktop.

#include <QObject>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class QDBusConnection;
class QDBusMessage;

namespace pendra {

/// Says how long keyboard and pointer have been left alone.
class IdleSource {
 public:
  /// Seconds; none where nobody can say.
  using Answer = std::function<void(std::optional<double> seconds)>;

  virtual ~IdleSource() = default;
  /// Answers once, at once or later, and not at all when the asker has gone by then. Never makes anybody
  /// wait.
  virtual void ask(QObject& asker, Answer answer) = 0;
};

/// The user's session. Asks the compositor first, because it counts in a known unit, then the screen saver,
/// then the login service, which only knows what the desktop tells it. Starts none of them.
class SessionIdle final : public IdleSource {
 public:
  static std::unique_ptr<SessionIdle> ofUser();
  /// The screen saver's unit differs from desktop to desktop and shows in how far it counts in `pause`.
  SessionIdle(const QDBusConnection& session, const QDBusConnection& system,
              std::chrono::milliseconds pause = std::chrono::seconds(2));
  ~SessionIdle() override;

  void ask(QObject& asker, Answer answer) override;

 private:
  enum class Service { Compositor, ScreenSaver, Login, None };
  using Reply = std::function<void(const QDBusMessage&)>;

  void askService(Service service, QObject& asker, const Answer& answer);
  void call(Service service, QObject& asker, const Reply& replied);
  /// Answers in seconds what the screen saver has counted.
  void readScreenSaver(double count, QObject& asker, const Answer& answer);
  void learnUnit(double count, QObject& asker, const Answer& answer);

  std::unique_ptr<QDBusConnection> session_;
  std::unique_ptr<QDBusConnection> system_;
  std::chrono::milliseconds pause_;
  Service answering_ = Service::Compositor;  ///< where to begin: those before it are not there
  std::optional<double> unit_;               ///< of the screen saver, in seconds
  QObject calls_;                            ///< owns those that are under way
};

}  // namespace pendra
