#include "support/ScriptedPanels.h"

#include <gtest/gtest.h>

namespace pendra {

std::optional<QString> ScriptedPanels::runSavePanel(const SavePanel& panel) {
  savePanels_.push_back(panel);
  return answer();
}

std::optional<QString> ScriptedPanels::runOpenPanel() {
  ++openPanels_;
  return answer();
}

void ScriptedPanels::beginSavePanel(const SavePanel& panel,
                                    std::function<void(std::optional<QString>)> ended) {
  const auto path = runSavePanel(panel);
  if (ended) ended(path);
}

std::optional<QString> ScriptedPanels::answer() {
  if (whileOpen_) whileOpen_();
  if (script_.empty()) {
    ADD_FAILURE() << "Nobody foresaw a panel";
    return std::nullopt;
  }
  std::optional<QString> path;
  path.swap(script_.front());
  script_.pop_front();
  return path;
}

}  // namespace pendra
