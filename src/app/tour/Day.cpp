#include "Day.h"

#include <QApplication>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <cmath>

#include "Stage.h"
#include "StandIn.h"
#include "model/Queries.h"
#include "platform/Text.h"
#include "ui/LogPaneView.h"
#include "ui/RowTableView.h"
#include "ui/TimerWindowController.h"

namespace pendra {

namespace {

constexpr QSize kTimerWindow(1024, 640);
constexpr std::chrono::seconds kPatience{20};
constexpr std::chrono::milliseconds kBetweenLooks{10};
constexpr double kMinute = 60;
constexpr double kHour = 60 * kMinute;

using Deed = std::function<void(QDialog&)>;

/// Lets happen what happens until that holds; the tour is of no use when it never does.
void until(const char* what, const std::function<bool()>& holds) {
  const QDeadlineTimer deadline(kPatience);
  while (!holds()) {
    if (deadline.hasExpired()) qFatal("the tour waits in vain for %s", what);
    QCoreApplication::processEvents(QEventLoop::AllEvents, static_cast<int>(kBetweenLooks.count()));
  }
}

/// Does that in the sheet that opens next, whenever that is.
void inNextSheet(Deed deed) {
  auto* looks = new QTimer(qApp);
  QObject::connect(looks, &QTimer::timeout, qApp, [looks, deed = std::move(deed)] {
    auto* sheet = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!sheet || !sheet->isVisible()) return;
    looks->stop();
    looks->deleteLater();
    deed(*sheet);
  });
  looks->start(kBetweenLooks);
}

template <class Widget>
Widget& named(const QWidget& in, const QString& name) {
  for (auto* widget : in.findChildren<Widget*>()) {
    if (widget->accessibleName() == name || widget->objectName() == name) return *widget;
  }
  qFatal("nothing in the tour is called %s", qPrintable(name));
}

void press(const QWidget& in, const QString& button) {
  for (auto* one : in.findChildren<QPushButton*>()) {
    if (one->text().remove(u'&') == button && one->isVisible()) return one->click();
  }
  qFatal("the tour finds no button %s", qPrintable(button));
}

void key(QWidget& in, int code, const QString& text = {}) {
  for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, code, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&in, &event);
  }
}

/// Types over what stands in the field, and leaves it. When its window gets the keyboard is the desktop's to
/// say, so nothing here waits for that.
void typeInto(QWidget& field, const QString& text) {
  field.window()->activateWindow();
  field.setFocus(Qt::TabFocusReason);
  const auto* box = qobject_cast<QComboBox*>(&field);
  (box ? box->lineEdit() : qobject_cast<QLineEdit*>(&field))->selectAll();
  for (const QChar letter : text) key(field, 0, letter);
  key(field, Qt::Key_Tab);
}

/// Markdown: what is done, and what it looks like.
class Story {
 public:
  explicit Story(Album& album) : album_(album) {}

  void tell(const QString& name, const QString& words, QWidget& window) {
    const QString picture = formatted(u"day-%@-%@", {QString::number(++steps_), name});
    album_.take(picture, window);
    text_ += formatted(u"%@. %@\n\n   ![%@](%@-light.png)\n\n",
                       {QString::number(steps_), words, window.windowTitle(), picture});
  }
  void finish(const QString& words) {
    album_.write(QStringLiteral("tour.md"), u"# A day with Pendra\n\n" + text_ + words + u'\n');
  }

 private:
  Album& album_;
  QString text_;
  int steps_ = 0;
};

class Day {
 public:
  explicit Day(Album& album)
      : story_(album), stage_(std::nullopt, [this](const QString& caches) { vantor_.emplace(caches); }) {}

  bool live() {
    setUp();
    add(QStringLiteral("Hollins Architects"), QStringLiteral("Website"), QStringLiteral("Development"));
    work(90 * kMinute);
    add(QStringLiteral("Marsh & Lowe"), {}, QStringLiteral("Meeting"));
    work(30 * kMinute);
    show("time",
         QStringLiteral("Two activities run side by side. The title says what runs, and for how long."));
    stop();
    correct();
    takeBack();
    send();
    backUp();
    report();
    return judge();
  }

 private:
  [[nodiscard]] QWidget& window() { return *stage_.timer().log().window(); }
  void show(const QString& name, const QString& words) { story_.tell(name, words, window()); }
  void show(const char* name, const QString& words) { show(QString::fromLatin1(name), words); }
  [[nodiscard]] RowTableView& activities() {
    return named<RowTableView>(window(), QStringLiteral("Activities"));
  }

  void setUp() {
    QWidget& setup = windowTitled(QStringLiteral("Set Up Pendra"));
    auto& ok = named<QPushButton>(setup, QStringLiteral("okButton"));
    const auto& employees = named<QComboBox>(setup, QStringLiteral("Employee"));
    until("Vantor's employees", [&] {
      return employees.count() > 0 && ok.isEnabled() && !setup.findChild<QWidget*>(QStringLiteral("spinner"));
    });
    story_.tell(QStringLiteral("set-up"),
                QStringLiteral("Vantor runs, so the document is linked with the company that is open there."),
                setup);
    inNextSheet([](QDialog& panel) { QMetaObject::invokeMethod(&panel, "accept"); });
    ok.click();
    until("the timer window", [this] { return stage_.hasTimerWindow(); });
    window().resize(kTimerWindow);
    stage_.perform(Command::ServicesList);
    stage_.perform(Command::MarkAll);
    windowTitled(QStringLiteral("Service Items")).close();
  }

  void add(const QString& customer, const QString& job, const QString& service) {
    inNextSheet([&](QDialog& sheet) {
      typeInto(named<QComboBox>(sheet, QStringLiteral("Customer")), customer);
      if (!job.isEmpty()) typeInto(named<QComboBox>(sheet, QStringLiteral("Job")), job);
      typeInto(named<QComboBox>(sheet, QStringLiteral("Service")), service);
      story_.tell(QStringLiteral("add"), QStringLiteral("An activity is added; its timer starts at once."),
                  sheet);
      press(sheet, QStringLiteral("Add"));
    });
    stage_.perform(Command::AddActivity);
    ++running_;
  }

  /// So much time goes by for all that runs.
  void work(double seconds) {
    stage_.advance(seconds);
    timed_ += running_ * seconds;
    stage_.timer().state().updateTimeDisplay();
  }

  void stop() {
    for (int row = 0; row < activities().model()->rowCount(); ++row) {
      activities().selectRow(row);
      stage_.perform(Command::ToggleTimer);
    }
    running_ = 0;
  }

  void correct() {
    auto& log = named<RowTableView>(window(), QStringLiteral("Time log"));
    log.setFocus();
    log.selectRow(0);
    inNextSheet([this](QDialog& sheet) {
      typeInto(named<QLineEdit>(sheet, QStringLiteral("Duration")), QStringLiteral("0:45"));
      story_.tell(QStringLiteral("correct"),
                  QStringLiteral("A length is corrected. What will be stored is said beside the field."),
                  sheet);
      press(sheet, QStringLiteral("OK"));
    });
    stage_.timer().editTimeEntry();
    log.clearSelection();
  }

  void takeBack() {
    stage_.perform(Command::Undo);
    show("take-back",
         QStringLiteral("That was wrong: Undo takes it back, and every other step of the day could be."));
  }

  void send() {
    inNextSheet([this](QDialog& sheet) {
      story_.tell(QStringLiteral("send"), QStringLiteral("Before anything leaves it is shown what will."),
                  sheet);
      press(sheet, QStringLiteral("Send"));
    });
    stage_.perform(Command::SendAllTime);
    QWidget* sent = nullptr;
    until("the news that all was sent",
          [&] { return (sent = QApplication::activeModalWidget()) != nullptr; });
    press(*sent, QStringLiteral("OK"));
    show("sent", QStringLiteral("What was sent is in Vantor, and marked here with when."));
  }

  void backUp() {
    inNextSheet([](QDialog& panel) { QMetaObject::invokeMethod(&panel, "accept"); });
    stage_.perform(Command::BackUp);
    const auto& news = named<QWidget>(window(), QStringLiteral("noticeLine"));
    until("the news that it was backed up",
          [&] { return news.isVisible() && news.maximumHeight() == QWIDGETSIZE_MAX; });
    show("back-up", QStringLiteral("A copy of the document is a file, and can lie anywhere."));
    Notices& notices = stage_.session().notices();
    notices.withdraw(notices.standing().front().key);
  }

  void report() {
    stage_.perform(Command::Report);
    story_.tell(QStringLiteral("report"), QStringLiteral("The report sums the hours of the month."),
                windowTitled(QStringLiteral("Report")));
  }

  /// What the table shows of each activity.
  [[nodiscard]] QStringList totals() {
    QStringList texts;
    for (const ActivityRow& row : stage_.timer().state().rows().rows()) texts << row.total;
    return texts;
  }

  /// What was timed, what the document holds, and what has arrived are the same hours; so is what is shown.
  bool judge() {
    const QStringList shown = totals();
    stage_.timer().state().rebuild();
    if (shown != totals()) return false;
    double stamped = 0;
    for (const TimeEntry* entry : stage_.session().context()->all<TimeEntry>()) {
      if (entry->wasSent()) stamped += entry->storedDuration();
    }
    const double arrived = vantor_->hours() * kHour;
    story_.finish(formatted(QStringLiteral("Timed: %@ hours. Received by Vantor: %@ hours in %@ records."),
                            {QString::number(timed_ / kHour), QString::number(vantor_->hours()),
                             QString::number(vantor_->received().size())}));
    return timed_ > 0 && std::abs(timed_ - stamped) < 1 && std::abs(timed_ - arrived) < 1;
  }

  Story story_;
  std::optional<StandIn> vantor_;
  Stage stage_;
  int running_ = 0;
  double timed_ = 0;
};

}  // namespace

bool drawDay(Album& album) { return Day(album).live(); }

}  // namespace pendra
