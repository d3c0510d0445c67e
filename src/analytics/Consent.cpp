#include "analytics/Consent.h"

#include "platform/Preferences.h"

namespace pendra {

namespace {

const QString kShown = QStringLiteral("shown");
const QString kAnswered = QStringLiteral("answered");

}  // namespace

void Consent::programStarted() {
  if (defaults_.contains(preferences::kStatisticsNotice)) noticeAnswered();
}

bool Consent::isNoticeDue() const {
  return !defaults_.contains(preferences::kStatisticsNotice) &&
         !defaults_.contains(preferences::kAnalyticsTracker);
}

void Consent::noticeShown() { defaults_.setText(preferences::kStatisticsNotice, kShown); }

void Consent::noticeAnswered() { defaults_.setText(preferences::kStatisticsNotice, kAnswered); }

bool Consent::isRefused() const {
  return defaults_.contains(preferences::kAnalyticsTracker) &&
         !defaults_.boolean(preferences::kAnalyticsTracker);
}

bool Consent::isGiven() const {
  const bool isAskedFor = defaults_.boolean(preferences::kAnalyticsTracker);
  return isAskedFor || (!isRefused() && defaults_.text(preferences::kStatisticsNotice) == kAnswered);
}

Notifier& Consent::noticeChanges() { return defaults_.changesOf(preferences::kStatisticsNotice); }

}  // namespace pendra
