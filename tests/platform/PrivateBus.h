#pragma once

#include <QCoreApplication>
#include <QDBusConnection>
#include <QProcess>
#include <QTemporaryFile>

#include "support/Print.h"

namespace pendra {

/// A session bus of the test's own, and an application to receive its messages.
class PrivateBus {
 public:
  PrivateBus();
  ~PrivateBus();
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  /// A new connection, as of a process of its own.
  QDBusConnection connect();

 private:
  int argumentCount_ = 0;
  QCoreApplication application_{argumentCount_, nullptr};
  QTemporaryFile configuration_;
  QProcess daemon_;
  QString address_;
  QStringList connections_;
};

}  // namespace pendra
