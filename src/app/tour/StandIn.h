#pragma once
// Vantor's end of the channel, for a day that nobody else takes part in.

#include <QSocketNotifier>
#include <QStringList>
#include <memory>

#include "channel/ServingEnd.h"

namespace pendra {

/// A company with two customers and two services, which takes every record.
class StandIn {
 public:
  /// Serves in that caches folder, as Vantor does in the user's.
  explicit StandIn(const QString& caches);
  ~StandIn();

  /// What was sent, in the order of arrival.
  [[nodiscard]] const QStringList& received() const { return received_; }
  /// The hours of it.
  [[nodiscard]] double hours() const;

 private:
  ArchiveValue perform(const Operation& operation, const ArchiveValue::Array& arguments);

  QStringList received_;
  std::unique_ptr<ServingEnd> end_;
  std::unique_ptr<QSocketNotifier> arrived_;
};

}  // namespace pendra
