#pragma once
// One Pendra runs for each user. The first start owns Pendra's identifier on the session bus until it
// ends; every later start hands its file to the first and ends at once.

#include <QString>
#include <chrono>
#include <functional>
#include <memory>

class QDBusConnection;

namespace pendra {

class BusInterface;

/// Makes this process the one that runs, or hands its file to the one that does. Without a session bus a
/// local socket named by the identifier does the same.
class SingleInstance {
 public:
  /// Told the file of a later start, absolute; empty when that start had none and only the window
  /// should come to the front.
  using Opener = std::function<void(const QString& path)>;

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
    HandedOver,  ///< another one has taken the path, and this one should end
    Unanswered,  ///< another one runs and does not answer; it may take the path later
  };
  /// Finds out which process is the one that runs; another one is handed `path`, absolute or empty.
  [[nodiscard]] Claim claim(const QString& path);
  /// Sets who opens the files of later starts. What came before is told at once.
  void setOpener(Opener opener);

  /// Offers an interface to everybody on the session bus, where there is one. It must outlive every event
  /// that is handled from now on.
  void offer(BusInterface& interface);

  /// One way of meeting the other instance.
  class Meeting;

 private:
  static constexpr std::chrono::milliseconds kPatience{5000};

  std::unique_ptr<Meeting> meeting_;
  std::chrono::milliseconds patience_;
};

}  // namespace pendra
