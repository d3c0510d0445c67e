#include "SleepSignal.h"

namespace pendra {

SleepSignal::SleepSignal(QDBusConnection system, std::function<void()> told) : told_(std::move(told)) {
  system.connect(QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
                 QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep"), this,
                 SLOT(prepareForSleep(bool)));
}

void SleepSignal::prepareForSleep(bool) { told_(); }

}  // namespace pendra
