#pragma once

#include <QMainWindow>
#include <functional>

class QLabel;
class QVBoxLayout;

namespace pendra {

class ActivityPane;
class GradientDividerSplitView;
class Notices;
class RowTableView;
class TimerHeader;

/// The timer window's controls and how they stand: header, notice line, activities above the log, footer.
class TimerWindow final : public QMainWindow {
 public:
  /// `quickEntry` stands under the header. `shouldClose` is asked when the user closes the window; `closed`
  /// is told when that happened.
  TimerWindow(Notices& notices, QWidget* quickEntry, std::function<bool()> shouldClose,
              std::function<void()> closed);

  /// Puts the log below the activities, and into the footer its count and sum and the hours over everything.
  void setLog(QWidget* pane, QWidget* summary, QWidget* glance);

  TimerHeader* header = nullptr;
  ActivityPane* activities = nullptr;
  RowTableView* activityTable = nullptr;
  GradientDividerSplitView* splitView = nullptr;
  QLabel* documentState = nullptr;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QWidget* makeFooter();
  QWidget* makeStatusLine();

  std::function<bool()> shouldClose_;
  std::function<void()> closed_;
  QVBoxLayout* log_ = nullptr;
  QVBoxLayout* summary_ = nullptr;
  QVBoxLayout* glance_ = nullptr;
};

}  // namespace pendra
