#include "support/ScriptedAlerts.h"

#include <gtest/gtest.h>

namespace pendra {

namespace {

/// The answer for the button of this title.
int answerFor(const Alert& alert, const QString& button) {
  const qsizetype index = alert.buttons.indexOf(button);
  EXPECT_GE(index, 0) << "The alert \"" << alert.message.toStdString() << "\" has no button \""
                      << button.toStdString() << '"';
  return kFirstButton + static_cast<int>(std::max<qsizetype>(index, 0));
}

}  // namespace

void ScriptedAlerts::willAnswer(const QStringList& buttons) {
  script_.insert(script_.end(), buttons.begin(), buttons.end());
}

void ScriptedAlerts::answerSheet(const QString& button) {
  ASSERT_FALSE(openSheets_.empty()) << "No sheet is open";
  const OpenSheet sheet = std::move(openSheets_.front());
  openSheets_.pop_front();
  if (sheet.answered) sheet.answered(answerFor(sheet.alert, button));
}

QStringList ScriptedAlerts::messages() const {
  QStringList messages;
  for (const Alert& alert : shown_) messages << alert.message;
  return messages;
}

Alert ScriptedAlerts::last() const {
  EXPECT_FALSE(shown_.empty()) << "No alert was shown";
  return shown_.empty() ? Alert{} : shown_.back();
}

int ScriptedAlerts::runAlert(const Alert& alert) {
  shown_.push_back(alert);
  return scriptedAnswer(alert);
}

void ScriptedAlerts::beginSheet(const Alert& alert, std::function<void(int)> answered) {
  shown_.push_back(alert);
  if (holdsSheets_) {
    openSheets_.push_back({alert, std::move(answered)});
    return;
  }
  const int answer = scriptedAnswer(alert);
  if (answered) answered(answer);
}

int ScriptedAlerts::scriptedAnswer(const Alert& alert) {
  if (alert.buttons.size() == 1) return kFirstButton;
  if (script_.empty()) {
    ADD_FAILURE() << "Nobody foresaw the alert \"" << alert.message.toStdString() << '"';
    return kFirstButton + static_cast<int>(alert.buttons.size()) - 1;
  }
  const QString button = script_.front();
  script_.pop_front();
  return answerFor(alert, button);
}

}  // namespace pendra
