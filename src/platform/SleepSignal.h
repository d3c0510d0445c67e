#pragma once

#include <QDBusConnection>
#include <QObject>
#include <functional>

namespace pendra {

/// Tells whenever the login service says that the machine goes to sleep, or that it has woken.
class SleepSignal final : public QObject {
  Q_OBJECT

 public:
  SleepSignal(QDBusConnection system, std::function<void()> told);

 private:
  Q_SLOT void prepareForSleep(bool begins);

  std::function<void()> told_;
};

}  // namespace pendra
