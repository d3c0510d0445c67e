#include "platform/SingleInstance.h"

#include <QDBusConnection>
#include <QStandardPaths>

#include "InstanceMeeting.h"

namespace pendra {

SingleInstance::SingleInstance()
    : SingleInstance(QDBusConnection::sessionBus(),
                     QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)) {}

SingleInstance::SingleInstance(const QDBusConnection& bus, const QString& socketFolder)
    : meeting_(bus.isConnected() ? meetOnBus(bus) : meetInFolder(socketFolder)) {}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::claim(const QString& path) {
  // The other instance may end between the two questions; then this one takes its place.
  constexpr int kAttempts = 3;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    if (meeting_->become()) return true;
    if (meeting_->handOver(path)) return false;
  }
  return false;
}

void SingleInstance::setOpener(Opener opener) { meeting_->setOpener(std::move(opener)); }

void SingleInstance::Meeting::setOpener(Opener opener) {
  opener_ = std::move(opener);
  for (const QString& path : std::exchange(waiting_, {})) opener_(path);
}

void SingleInstance::Meeting::receive(const QString& path) {
  if (opener_) {
    opener_(path);
  } else {
    waiting_ << path;
  }
}

}  // namespace pendra
