#include "SleepSignal.h"

namespace pendra {

SleepSignal::SleepSignal(QDBusConnection system, std::function<void()> told) : told_(std::move(told)) {
  system.connect("org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                 "PrepareForSleep", this, SLOT(prepareForSleep(bool)));
}

void SleepSignal::prepareForSleep(bool) { told_(); }

}  // namespace pendra
