#pragma once

#include <deque>
#include <vector>

#include "platform/Panels.h"
#include "support/Print.h"

namespace pendra {

/// Records every panel and answers each with the next scripted path, or none for a cancelled one. A
/// panel that the script does not foresee fails the test and is cancelled.
class ScriptedPanels final : public Panels {
 public:
  void willChoose(const QString& path) { script_.emplace_back(path); }
  void willCancel() { script_.emplace_back(std::nullopt); }
  /// Done while a panel stands open, before it answers.
  void whileOpen(std::function<void()> action) { whileOpen_ = std::move(action); }

  /// What the save panels were opened with, oldest first.
  [[nodiscard]] const std::vector<SavePanel>& savePanels() const { return savePanels_; }
  [[nodiscard]] int openPanels() const { return openPanels_; }

  std::optional<QString> runSavePanel(const SavePanel& panel) override;
  std::optional<QString> runOpenPanel() override;
  std::optional<QString> runFolderPanel() override { return runOpenPanel(); }
  void beginSavePanel(const SavePanel& panel, std::function<void(std::optional<QString>)> ended) override;

 private:
  std::optional<QString> answer();

  std::deque<std::optional<QString>> script_;
  std::function<void()> whileOpen_;
  std::vector<SavePanel> savePanels_;
  int openPanels_ = 0;
};

}  // namespace pendra
