#pragma once

#include "link/SetupFlow.h"
#include "ui/AppWindow.h"

class QButtonGroup;
class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;

namespace pendra {

class PathControl;

/// "Set Up Pendra": makes a document and decides its mode. What it does stands in SetupFlow; the window only
/// shows and asks. Reading the new document closes it, but it stays on the screen until the lists are loaded.
class SetupController final : public AppWindow, public SetupView {
  Q_OBJECT
 public:
  /// Both must outlive it. Vantor is asked soon after the window has come up; a question that fails leaves
  /// a window in which standalone can be chosen.
  SetupController(const WindowFrame& frame, ConnectionChecks& checks, ListSync& lists);

  void closeUnasked() override;
  /// Whether it only stays until the lists are loaded.
  [[nodiscard]] bool isDone() const { return isDone_; }
  void showDisplay(const SetupDisplay& display) override;
  [[nodiscard]] int selectedRow() const override;
  [[nodiscard]] QString selectedName() const override;
  void finish() override;

 private:
  [[nodiscard]] QWidget* makeContent();
  [[nodiscard]] QWidget* makeSettings();
  [[nodiscard]] QWidget* makeStatus();
  [[nodiscard]] QWidget* makeButtons();
  void lookForVantor();
  void save();
  void fitToContent();

  Session& session_;
  SetupFlow flow_;
  bool saving_ = false;
  bool isDone_ = false;
  QStringList employeeNames_;

  QWidget* content_ = nullptr;
  QButtonGroup* modeRadios_ = nullptr;
  QWidget* linkSettings_ = nullptr;
  PathControl* companyFile_ = nullptr;
  QLabel* noFileText_ = nullptr;
  QLabel* notRunningText_ = nullptr;
  QPushButton* lookAgain_ = nullptr;
  QComboBox* employeePopup_ = nullptr;
  QPushButton* okButton_ = nullptr;
  QPushButton* cancelButton_ = nullptr;
  QProgressBar* statusSpinner_ = nullptr;
  QLabel* statusText_ = nullptr;
};

}  // namespace pendra
