#pragma once

#include "PreferencePage.h"
#include "store/Observers.h"
#include "ui/AppWindow.h"

class QButtonGroup;
class QComboBox;
class QPushButton;

namespace pendra {

/// The look, and with which day a week begins.
class AppearancePage final : public PreferencePage {
 public:
  explicit AppearancePage(UserDefaults& defaults);

 private:
  [[nodiscard]] QWidget* makeLook(const QString& value, const QString& title);
  [[nodiscard]] QComboBox* makeWeek();

  QButtonGroup* looks_;
};

/// When and where backups make themselves, and which was the last.
class BackupsPage final : public PreferencePage {
 public:
  explicit BackupsPage(const WindowFrame& frame);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  [[nodiscard]] QHBoxLayout* makeFolder(const WindowFrame& frame);
  [[nodiscard]] QHBoxLayout* makeLast(const WindowFrame& frame);
  /// A folder that is not there is marked and not taken over.
  void takeFolder();
  void showFolder(bool isTaken);
  void showLast();

  Session& session_;
  QLineEdit* folder_ = nullptr;
  QLabel* remark_ = nullptr;
  QLabel* last_ = nullptr;
  QLabel* lastWords_ = nullptr;
  QPushButton* restore_ = nullptr;
  Notifier::Subscription documents_;
};

/// How time is sent, and to which company file the document is linked.
class VantorPage final : public PreferencePage {
 public:
  explicit VantorPage(const WindowFrame& frame);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void showLink();

  Session& session_;
  QLabel* link_;
  QLabel* lists_;
  QPushButton* update_;
  Notifier::Subscription documents_;
  Subscription edits_;
};

}  // namespace pendra
