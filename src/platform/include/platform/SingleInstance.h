#pragma once
// One Pendra runs for each user. The first start owns Pendra's identifier on the session bus until it
// ends; every later start hands what it was asked for to the first and ends at once.

#include <QString>
#include <chrono>
#include <functional>
#include <memory>

class QDBusConnection;

namespace pendra {

class BusInterface;

/// What a start asks of the Pendra that runs.
struct StartRequest {
  QString path{};    ///< absolute; empty: the windows only come to the front
  QString action{};  ///< of the desktop entry, by its name there
  /// The desktop's leave to take the front, which it gave to this start.
  QString activation{};

  bool operator==(const StartRequest&) const = default;
};

/// Makes this process the one that runs, or hands its request to the one that does. Without a session bus a
/// local socket named by the identifier does the same.
class SingleInstance {
 public:
  /// Told what a later start asks for.
  using Opener = std::function<void(const StartRequest&)>;

  /// For the user who runs the program.
  SingleInstance();
  /// Uses `socketFolder` when `bus` is not connected. Waits so long for an instance that runs to answer.
  SingleInstance(const QDBusConnection& bus, const QString& socketFolder,
                 std::chrono::milliseconds patience = kPatience);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  enum class Claim {
    First,       ///< this process is the one that runs, or there is no way to find out, which is logged
    HandedOver,  ///< another one has taken the request, and this one should end
    Unanswered,  ///< another one runs and does not answer; it may take the request later
  };
  /// Finds out which process is the one that runs; another one is handed the request, after `letGo` of what
  /// only the one that runs may keep.
  [[nodiscard]] Claim claim(const StartRequest& request, const std::function<void()>& letGo = {});
  /// Sets who carries out what later starts ask for. What came before is told at once.
  void setOpener(Opener opener);

  /// Offers one more interface to everybody on the session bus, where there is one. It must outlive every
  /// event that is handled from now on.
  void offer(BusInterface& interface);

  /// One way of meeting the other instance.
  class Meeting;

 private:
  static constexpr std::chrono::milliseconds kPatience{5000};

  std::unique_ptr<Meeting> meeting_;
  std::chrono::milliseconds patience_;
};

}  // namespace pendra
