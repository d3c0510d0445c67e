#include "analytics/Disclosure.h"

#include <QFileInfo>
#include <QUrl>

#include "analytics/PageProcess.h"
#include "platform/Identifiers.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

bool areStatisticsInstalled() { return QFileInfo::exists(PageProcess::installed()); }

QString statisticsDisclosure() {
  const QString text = tr(
      "%@ is told that Pendra or Vantor was started, that an activity was added, that one of nine windows of "
      "Vantor’s was opened, and that this switch was used. With each goes the moment, the versions of Pendra "
      "and of the system, the computer’s model, the screen’s size, whether it is light or dark, two words "
      "that "
      "are the same for everybody, and a random number that is made anew for each timer window and kept "
      "nowhere. Nothing that you type, no file and no time that you work is ever sent.");
  return formatted(text, {QUrl(identifiers::kAnalyticsAddress).host()});
}

QString statisticsDisclosureHere() {
  if (areStatisticsInstalled()) return statisticsDisclosure();
  return tr("The package pendra-statistics is not installed, so nothing is sent. "
            "With it:") +
         u' ' + statisticsDisclosure();
}

}  // namespace pendra
