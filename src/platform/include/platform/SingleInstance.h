#pragma once
// One Pendra runs for each user. The first start owns Pendra's identifier on the session bus until it
// ends; every later start hands its file to the first and ends at once.

#include <QString>
#include <functional>
#include <memory>

class QDBusConnection;

namespace pendra {

/// Makes this process the one that runs, or hands its file to the one that does. Without a session bus a
/// local socket named by the identifier does the same.
class SingleInstance {
 public:
  /// Told the file of a later start, absolute; empty when that start had none and only the window
  /// should come to the front.
  using Opener = std::function<void(const QString& path)>;

  /// For the user who runs the program.
  SingleInstance();
  /// Uses `socketFolder` when `bus` is not connected.
  SingleInstance(const QDBusConnection& bus, const QString& socketFolder);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  /// Whether this process is the one that runs. If not, the other one was handed `path`, absolute or
  /// empty, and this one should end.
  [[nodiscard]] bool claim(const QString& path);
  /// Sets who opens the files of later starts. What came before is told at once.
  void setOpener(Opener opener);

  /// One way of meeting the other instance.
  class Meeting;

 private:
  std::unique_ptr<Meeting> meeting_;
};

}  // namespace pendra
