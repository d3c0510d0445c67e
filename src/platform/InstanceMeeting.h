#pragma once
// The two places at which instances of the program can meet: the session bus, or a socket in a folder
// of the user's own where there is no bus.

#include <QStringList>

#include "platform/SingleInstance.h"

class QDBusConnection;

namespace pendra {

class SingleInstance::Meeting {
 public:
  virtual ~Meeting() = default;

  /// Becomes the one instance; false when another is.
  virtual bool become() = 0;
  /// Hands `path` to the instance that runs; false when there is none any more.
  virtual bool handOver(const QString& path) = 0;

  void setOpener(Opener opener);

 protected:
  /// Called for what a later start hands over.
  void receive(const QString& path);

 private:
  Opener opener_;
  QStringList waiting_;  ///< what came before somebody could open it
};

std::unique_ptr<SingleInstance::Meeting> meetOnBus(const QDBusConnection& bus);
std::unique_ptr<SingleInstance::Meeting> meetInFolder(const QString& folder);

}  // namespace pendra
