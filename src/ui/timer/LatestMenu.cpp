#include "LatestMenu.h"

#include <QMenu>

#include "model/ActivityTitle.h"
#include "platform/Translation.h"
#include "ui_core/TimerState.h"

namespace pendra {

namespace {

/// What would be an access key otherwise is meant.
QString menuText(QString title) { return title.replace(u'&', QStringLiteral("&&")); }

void addLatest(QMenu& menu, TimerState& state) {
  const auto context = state.session().context();
  const auto latest = context ? latestActivities(*context) : std::vector<Activity*>();
  for (Activity* activity : latest) {
    const QString title = activityTitle(*activity);
    QAction* item = menu.addAction(menuText(title.isEmpty() ? shortTitle(*activity) : title));
    QObject::connect(item, &QAction::triggered, &menu, [&state, chosen = Ref<Activity>(activity)] {
      if (!chosen) return;
      if (!chosen->isRunning()) state.toggle(*chosen);
      state.selectActivity(*chosen);
    });
  }
  if (latest.empty()) menu.addAction(tr("Nothing was timed yet"))->setEnabled(false);
}

}  // namespace

QMenu* makeLatestMenu(QWidget& of, TimerState& state) {
  auto* menu = new QMenu(&of);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setObjectName(QStringLiteral("latestMenu"));
  menu->setAccessibleName(tr("Latest activities"));
  addLatest(*menu, state);
  return menu;
}

}  // namespace pendra
