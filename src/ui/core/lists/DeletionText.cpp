#include "DeletionText.h"

#include "model/TimeEntry.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra::lists {

namespace {

/// "with 23 entries, 4 of them unsent,".
QString withEntries(qsizetype entries, qsizetype unsent) {
  if (unsent == 0) return counted(entries, "with 1 entry", "with %Ln entries");
  if (unsent == entries) return counted(entries, "with 1 unsent entry", "with %Ln unsent entries");
  return counted(entries, "with 1 entry", "with %Ln entries, %@ of them unsent,",
                 {QLocale().toString(unsent)});
}

}  // namespace

QString lossSentence(const Objects<Activity>& activities, bool standalone) {
  const auto count = std::ssize(activities);
  if (count == 0) return {};
  bool allCompleted = true;
  qsizetype entries = 0;
  qsizetype unsent = 0;
  for (const Activity* activity : activities) {
    allCompleted = allCompleted && activity->completed() == true;
    for (const TimeEntry* entry : activity->entries()) {
      ++entries;
      if (!standalone && !entry->wasSent()) ++unsent;
    }
  }
  const QString who = allCompleted ? counted(count, "1 completed activity", "%Ln completed activities")
                                   : counted(count, "1 activity", "%Ln activities");
  if (entries == 0) return counted(count, "%@ loses this name.", "%@ lose this name.", {who});
  return counted(count, "%@ %@ keeps its time and loses this name.",
                 "%@ %@ keep their time and lose this name.", {who, withEntries(entries, unsent)});
}

}  // namespace pendra::lists
