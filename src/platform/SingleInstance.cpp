#include "platform/SingleInstance.h"

#include <QDBusConnection>
#include <QStandardPaths>

#include "InstanceMeeting.h"
#include "platform/Log.h"
#include "platform/Text.h"

namespace pendra {

SingleInstance::SingleInstance()
    : SingleInstance(QDBusConnection::sessionBus(),
                     QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)) {}

SingleInstance::SingleInstance(const QDBusConnection& bus, const QString& socketFolder,
                               std::chrono::milliseconds patience)
    : meeting_(bus.isConnected() ? meetOnBus(bus) : meetInFolder(socketFolder)), patience_(patience) {}

SingleInstance::~SingleInstance() = default;

SingleInstance::Claim SingleInstance::claim(const StartRequest& request, const std::function<void()>& letGo) {
  // The other instance may end between the two questions; then this one takes its place.
  constexpr int kAttempts = 3;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const auto becoming = meeting_->become();
    if (becoming == Meeting::Becoming::Done) return Claim::First;
    if (becoming == Meeting::Becoming::Nowhere) break;
    if (letGo) letGo();
    const auto handing = meeting_->handOver(request, patience_);
    if (handing == Meeting::Handing::Done) return Claim::HandedOver;
    if (handing == Meeting::Handing::Unanswered) return Claim::Unanswered;
  }
  // Two that run are no danger to a document, which only one of them can hold.
  logLine(formatted(u"Whether Pendra runs already is not known: %@", {meeting_->reason()}));
  return Claim::First;
}

void SingleInstance::setOpener(Opener opener) { meeting_->setOpener(std::move(opener)); }

void SingleInstance::offer(BusInterface& interface) { meeting_->offer(interface); }

void SingleInstance::Meeting::setOpener(Opener opener) {
  opener_ = std::move(opener);
  for (const StartRequest& request : std::exchange(waiting_, {})) opener_(request);
}

void SingleInstance::Meeting::receive(const StartRequest& request) {
  if (opener_) {
    opener_(request);
  } else {
    waiting_.push_back(request);
  }
}

}  // namespace pendra
