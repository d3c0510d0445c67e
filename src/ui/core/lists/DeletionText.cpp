#include "DeletionText.h"

#include <QCoreApplication>

#include "model/TimeEntry.h"
#include "platform/Text.h"

namespace pendra::lists {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("pendra::DeletionText", text); }

/// `one` when there is one, else `many` with the number.
QString counted(qsizetype count, const char* one, const char* many) {
  return count == 1 ? tr(one) : formatted(tr(many), {QString::number(count)});
}

/// "with 23 entries, 4 of them unsent,".
QString withEntries(qsizetype entries, qsizetype unsent) {
  if (unsent == 0) return counted(entries, "with 1 entry", "with %@ entries");
  if (unsent == entries) return counted(entries, "with 1 unsent entry", "with %@ unsent entries");
  return formatted(tr("with %@ entries, %@ of them unsent,"),
                   {QString::number(entries), QString::number(unsent)});
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
  const QString who = allCompleted ? counted(count, "1 completed activity", "%@ completed activities")
                                   : counted(count, "1 activity", "%@ activities");
  if (entries == 0)
    return formatted(count == 1 ? tr("%@ loses this name.") : tr("%@ lose this name."), {who});
  return formatted(count == 1 ? tr("%@ %@ keeps its time and loses this name.")
                              : tr("%@ %@ keep their time and lose this name."),
                   {who, withEntries(entries, unsent)});
}

}  // namespace pendra::lists
