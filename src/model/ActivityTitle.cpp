#include "model/ActivityTitle.h"

#include "model/Queries.h"

namespace pendra {

QString activityTitle(const Activity& activity) {
  QStringList names{queries::nameOf(activity.customer()), queries::nameOf(activity.job()),
                    queries::nameOf(activity.service())};
  names.removeAll(QString());
  return names.isEmpty() ? activity.notes().value_or(QString()) : names.join(u" - ");
}

}  // namespace pendra
