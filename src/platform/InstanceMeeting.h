#pragma once
// The two places at which instances of the program can meet: the session bus, or a socket in a folder
// of the user's own where there is no bus.

#include <chrono>
#include <vector>

#include "platform/SingleInstance.h"

class QDBusConnection;

namespace pendra {

class SingleInstance::Meeting {
 public:
  virtual ~Meeting() = default;

  enum class Becoming {
    Done,     ///< this is the one instance now
    Taken,    ///< another is
    Nowhere,  ///< instances cannot meet here; `reason` says why
  };
  enum class Handing {
    Done,
    NobodyThere,  ///< the other instance has ended
    Unanswered,   ///< it has not said in time that it took the request; it may yet
  };

  /// Becomes the one instance.
  virtual Becoming become() = 0;
  /// Hands the request to the instance that runs, which has so long to take it.
  virtual Handing handOver(const StartRequest& request, std::chrono::milliseconds patience) = 0;
  /// Why instances cannot meet.
  [[nodiscard]] virtual QString reason() const = 0;

  void setOpener(Opener opener);
  /// Nobody can ask where there is no bus.
  virtual void offer(BusInterface&) {}

 protected:
  /// Called for what a later start hands over.
  void receive(const StartRequest& request);

 private:
  Opener opener_;
  std::vector<StartRequest> waiting_;  ///< what came before somebody could carry it out
};

std::unique_ptr<SingleInstance::Meeting> meetOnBus(const QDBusConnection& bus);
std::unique_ptr<SingleInstance::Meeting> meetInFolder(const QString& folder);

}  // namespace pendra
