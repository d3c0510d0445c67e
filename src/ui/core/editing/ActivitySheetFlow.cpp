#include <QScopedValueRollback>

#include "ui_core/EditorFlows.h"

namespace pendra {

void ActivitySheetFlow::showActivitySheet(bool forNew) {
  const auto context = timer_.session().context();
  Activity* edited = forNew ? nullptr : timer_.currentActivity();
  if (running_ || !context || !(forNew || edited)) return;
  editor_.fill(edited);
  const QScopedValueRollback running(running_, true);
  const int code = editor_.controls().sheet.run();
  const bool isOpen = timer_.session().context() == context;  // or its document closed under the sheet
  Activity* stored = code == EditorSheet::kAccepted && isOpen ? editor_.store() : nullptr;
  editor_.letGo();
  if (!stored) return;
  timer_.setCurrentActivity(stored);
  if (const auto row = timer_.rowOfCurrentActivity()) timer_.selection().selectRow(*row);
}

}  // namespace pendra
