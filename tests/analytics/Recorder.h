#pragma once

#include <QJsonArray>
#include <QTcpServer>

#include "support/Print.h"

namespace pendra {

/// Stands where the statistics service would be, on this machine only, and keeps what it is sent.
class Recorder {
 public:
  Recorder();

  [[nodiscard]] QString address() const;
  /// The events so far, oldest first.
  [[nodiscard]] const QJsonArray& events() const { return events_; }
  /// Their names.
  [[nodiscard]] QStringList names() const;
  /// How often anything came to its door.
  [[nodiscard]] int connections() const { return connections_; }

 private:
  void accept();
  /// Takes a whole request out of `received`; false while a part of it is still to come.
  bool take(QByteArray& received);

  QTcpServer server_;
  QJsonArray events_;
  int connections_ = 0;
};

}  // namespace pendra
