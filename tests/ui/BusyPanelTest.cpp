#include "ui/BusyPanel.h"

#include <gtest/gtest.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QTest>
#include <QVBoxLayout>

namespace pendra {
namespace {

/// A call that goes on until the test ends it, or a cancel does.
class HeldCall final : public PendingCall {
 public:
  ~HeldCall() override { ::close(descriptor_); }
  [[nodiscard]] int finished() const override { return descriptor_; }
  void cancel() override {
    ++cancels;
    end();
  }
  void end() const { (void)::eventfd_write(descriptor_, 1); }
  int cancels = 0;

 private:
  int descriptor_ = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
};

/// Counts the times that a widget was drawn.
class Drawings final : public QObject {
 public:
  explicit Drawings(QWidget& widget) { widget.installEventFilter(this); }
  int count = 0;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    count += event->type() == QEvent::Paint;
    return false;
  }
};

class BusyPanelTest : public testing::Test {
 protected:
  BusyPanelTest() {
    auto* column = new QVBoxLayout(&window);
    column->addWidget(box);
    QObject::connect(new QShortcut(QKeySequence("Ctrl+T"), &window), &QShortcut::activated,
                     [this] { ++shortcuts; });
    QObject::connect(new QShortcut(Qt::Key_Escape, &window), &QShortcut::activated, [this] { ++shortcuts; });
    window.resize(600, 400);
    window.show();
    window.activateWindow();
    (void)QTest::qWaitForWindowExposed(&window);
    box->setFocus();
  }
  [[nodiscard]] QWidget* panel() const { return window.findChild<QWidget*>("spinner"); }
  template <class Part>
  [[nodiscard]] Part* part() const {
    return panel()->findChild<Part*>();
  }
  /// What the panel says, with its second line if that is shown.
  [[nodiscard]] QStringList words() const {
    QStringList texts;
    for (const auto* label : panel()->findChildren<QLabel*>())
      if (label->isVisible()) texts << label->text();
    return texts;
  }
  /// Makes a call, and does things while it goes on.
  template <class Deeds>
  void during(HeldCall& call, const Deeds& deeds) {
    QTimer::singleShot(0, &window, deeds);
    busy.prepare();
    busy.wait(call);
  }

  ModalDepth modals;
  BusyPanel busy{modals};
  QWidget window;
  QCheckBox* box = new QCheckBox("Billable");
  int shortcuts = 0;
};

TEST_F(BusyPanelTest, IsDrawnBeforeACallBeginsAndTheWindowIsAliveMeanwhile) {
  busy.prepare();
  ASSERT_TRUE(panel());
  Drawings panelDrawn(*panel());
  Drawings windowDrawn(window);
  busy.prepare();
  EXPECT_EQ(panelDrawn.count, 1) << "before the call begins";
  HeldCall call;
  during(call, [&] {
    EXPECT_TRUE(modals.asksVantor() && modals.isModal());
    EXPECT_EQ(words(), QStringList("Asking Vantor…"));
    window.update();
    QTimer::singleShot(30, &window, [&] { call.end(); });
  });
  EXPECT_GE(windowDrawn.count, 1);
  EXPECT_FALSE(modals.isModal());
  EXPECT_EQ(call.cancels, 0);
  EXPECT_TRUE(panel()) << "the next call may follow";
  QTRY_VERIFY2(!panel(), "it goes with the command");
}

TEST_F(BusyPanelTest, SaysWhatIsDoneAndCountsTheAnswers) {
  const auto answered = [this] {
    HeldCall call;
    call.end();
    busy.prepare();
    busy.wait(call);
  };
  {
    const Spinning lists(busy, "Fetching", 7);
    answered();
    answered();
    EXPECT_EQ(words(), QStringList("Fetching"));
    EXPECT_EQ(part<QProgressBar>()->value(), 2);
    EXPECT_EQ(part<QProgressBar>()->maximum(), 7);
  }
  EXPECT_EQ(words(), QStringList("Asking Vantor…"));
  busy.showProgress(3, 50);
  answered();
  EXPECT_EQ(words(), QStringList("Sending 3 of 50"));
  EXPECT_EQ(part<QProgressBar>()->value(), 3);
}

TEST_F(BusyPanelTest, WhateverElseAUserDoesIsRefusedWithTheReason) {
  HeldCall call;
  during(call, [&] {
    QTest::mouseClick(box, Qt::LeftButton, {}, {6, box->height() / 2});
    QTest::keyClick(box, Qt::Key_Space);
    QTest::keyClick(box, Qt::Key_T, Qt::ControlModifier);
    EXPECT_FALSE(window.close());
    EXPECT_EQ(words().value(1), "Nothing else can be done until Vantor has answered.");
    call.end();
  });
  EXPECT_FALSE(box->isChecked());
  EXPECT_EQ(shortcuts, 0);
  EXPECT_TRUE(window.isVisible());
  QTest::mouseClick(box, Qt::LeftButton, {}, {6, box->height() / 2});
  EXPECT_TRUE(box->isChecked()) << "afterwards everything is as before";
}

TEST_F(BusyPanelTest, CancelAndEscapeEndTheCallAndThoseThatWouldFollow) {
  HeldCall pressed;
  during(pressed, [&] { part<QPushButton>()->click(); });
  EXPECT_EQ(pressed.cancels, 1);
  HeldCall next;
  during(next, [] {});
  EXPECT_EQ(next.cancels, 1);
  EXPECT_FALSE(busy.pause(std::chrono::milliseconds(10)));
  QTRY_VERIFY(!panel());
  busy.cancel();
  EXPECT_TRUE(busy.pause(std::chrono::milliseconds(10))) << "another command is another matter";
  HeldCall escaped;
  during(escaped, [&] { QTest::keyClick(box, Qt::Key_Escape); });
  EXPECT_EQ(escaped.cancels, 1);
  EXPECT_EQ(shortcuts, 0);
}

TEST_F(BusyPanelTest, TheEndOfTheProgramEndsTheCall) {
  HeldCall call;
  QTimer::singleShot(0, &window, [&] { during(call, [] { QCoreApplication::exit(0); }); });
  QApplication::exec();
  EXPECT_EQ(call.cancels, 1);
}

}  // namespace
}  // namespace pendra
