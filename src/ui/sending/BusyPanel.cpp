#include "ui/BusyPanel.h"

#include <poll.h>

#include <QAccessible>
#include <QApplication>
#include <QEventLoop>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSocketNotifier>
#include <QVBoxLayout>

#include "platform/Text.h"
#include "ui/FrontWindow.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

/// How long the panel stays after a call, in milliseconds; longer than the pauses between calls.
constexpr int kStays = 150;
constexpr int kWidth = 300;

bool isOver(const PendingCall& call) {
  pollfd finished{.fd = call.finished(), .events = POLLIN, .revents = 0};
  return ::poll(&finished, 1, 0) > 0;
}

/// Whether the event is a user's wish to do something, and one that was just expressed.
bool isDeed(QEvent::Type type) {
  return type == QEvent::MouseButtonPress || type == QEvent::KeyPress || type == QEvent::Shortcut ||
         type == QEvent::Close;
}

/// Whether the event could change something, by itself or with others.
bool couldAct(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::TouchBegin:
    case QEvent::TouchEnd:
    case QEvent::DragEnter:
    case QEvent::Drop:
      return true;
    default:
      return isDeed(type);
  }
}

bool isEscape(const QEvent& event) {
  if (event.type() == QEvent::KeyPress) return static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape;
  return event.type() == QEvent::Shortcut &&
         static_cast<const QShortcutEvent&>(event).key() == QKeySequence(Qt::Key_Escape);
}

}  // namespace

/// While it lives, events that could act reach the panel only.
class BusyPanel::Standing {
 public:
  explicit Standing(BusyPanel& panel) : panel_(panel), run_(panel.modals_, ModalDepth::For::Vantor) {
    panel_.hiding_.stop();
    qApp->installEventFilter(&panel_);
  }
  ~Standing() {
    qApp->removeEventFilter(&panel_);
    panel_.hiding_.start();
  }
  Q_DISABLE_COPY_MOVE(Standing)

 private:
  BusyPanel& panel_;
  ModalDepth::Run run_;
};

BusyPanel::BusyPanel(ModalDepth& modals) : modals_(modals) {
  hiding_.setSingleShot(true);
  hiding_.setInterval(kStays);
  connect(&hiding_, &QTimer::timeout, this, &BusyPanel::hide);
}

BusyPanel::~BusyPanel() { hide(); }

void BusyPanel::startSpinner(const QString& words, int answers) {
  words_ = words;
  answers_ = 0;
  awaited_ = answers;
  if (panel_) showState();
}

void BusyPanel::showProgress(int position, int total) {
  words_ = formatted(tr("Sending %@ of %@"), {QString::number(position), QString::number(total)});
  answers_ = position - 1;
  awaited_ = total;
  if (panel_) showState();
}

void BusyPanel::stopSpinner() { startSpinner({}, 0); }

void BusyPanel::prepare() {
  hiding_.stop();
  show();
}

void BusyPanel::wait(PendingCall& call) {
  const Standing standing(*this);
  call_ = &call;
  if (cancelled_) call.cancel();
  QEventLoop loop;
  QSocketNotifier finished(call.finished(), QSocketNotifier::Read);
  connect(&finished, &QSocketNotifier::activated, &loop, &QEventLoop::quit);
  if (!isOver(call)) loop.exec();
  call_ = nullptr;
  if (!isOver(call)) call.cancel();  // the program ends, and so does every loop
  ++answers_;
  if (panel_) showState();
}

bool BusyPanel::pause(std::chrono::milliseconds time) {
  const Standing standing(*this);
  QEventLoop loop;
  QTimer::singleShot(time, &loop, &QEventLoop::quit);
  if (!cancelled_) loop.exec();
  return !cancelled_;
}

void BusyPanel::cancel() {
  if (modals_.asksVantor() || hiding_.isActive()) cancelled_ = true;
  if (call_) call_->cancel();
}

void BusyPanel::show() {
  QWidget* window = frontWindow();
  if (panel_ && panel_->parentWidget() != window) takeAway();
  if (!window) return;
  if (!panel_) {
    build(*window);
    showState();
    place();
  }
  panel_->repaint();  // it alone: a window that is repainted leaves out what stands on it
}

void BusyPanel::build(QWidget& window) {
  panel_ = new QFrame(&window);
  panel_->setObjectName(QStringLiteral("spinner"));
  panel_->setAccessibleName(tr("Progress"));
  panel_->setFrameShape(QFrame::StyledPanel);
  panel_->setAutoFillBackground(true);
  panel_->setBackgroundRole(QPalette::Base);
  label_ = new QLabel;
  label_->setAlignment(Qt::AlignCenter);
  bar_ = new QProgressBar;
  bar_->setTextVisible(false);
  reason_ = new QLabel(tr("Nothing else can be done until Vantor has answered."));
  reason_->setForegroundRole(QPalette::PlaceholderText);
  reason_->setFont(Theme::quietFont());
  reason_->hide();
  cancelButton_ = new QPushButton(tr("Cancel"));
  cancelButton_->setObjectName(QStringLiteral("cancelCall"));
  cancelButton_->setAccessibleName(tr("Cancel"));
  cancelButton_->setToolTip(tr("Esc"));
  cancelButton_->setFocusPolicy(Qt::NoFocus);  // what has the keyboard keeps it; Escape is heard anyway
  connect(cancelButton_, &QPushButton::clicked, this, &BusyPanel::cancel);
  auto* column = new QVBoxLayout(panel_);
  column->setContentsMargins(metrics::kGrid * 3, metrics::kGrid * 2, metrics::kGrid * 3, metrics::kGrid * 2);
  column->setSpacing(metrics::kGrid);
  column->addWidget(label_);
  column->addWidget(bar_);
  column->addWidget(reason_, 0, Qt::AlignCenter);
  column->addWidget(cancelButton_, 0, Qt::AlignCenter);
  panel_->setMinimumWidth(kWidth);
}

void BusyPanel::showState() {
  label_->setText(words_.isEmpty() ? tr("Asking Vantor…") : words_);
  panel_->setAccessibleDescription(label_->text());
  bar_->setRange(0, awaited_);
  bar_->setValue(awaited_ > 0 ? std::min(answers_, awaited_) : 0);
}

/// In the middle of its window.
void BusyPanel::place() {
  panel_->ensurePolished();
  panel_->adjustSize();
  panel_->move(panel_->parentWidget()->rect().center() - panel_->rect().center());
  panel_->show();
  panel_->raise();
  panel_->parentWidget()->setCursor(Qt::BusyCursor);
  QAccessibleEvent alert(panel_, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void BusyPanel::hide() {
  cancelled_ = false;
  if (panel_) takeAway();
}

void BusyPanel::takeAway() {
  panel_->parentWidget()->unsetCursor();
  panel_->hide();
  panel_->deleteLater();
  panel_.clear();
}

void BusyPanel::refuse() {
  if (!panel_ || reason_->isVisible()) return;
  reason_->show();
  place();
}

bool BusyPanel::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  // A window of the system passes on to the widget in it; shortcuts go to actions, too.
  if (!couldAct(type) || (!watched->isWidgetType() && type != QEvent::Shortcut)) return false;
  const auto* widget = qobject_cast<QWidget*>(watched);
  if (panel_ && widget && (widget == panel_ || panel_->isAncestorOf(widget))) return false;
  if (isEscape(*event)) {
    cancel();
  } else if (isDeed(type)) {
    refuse();
  }
  event->setAccepted(type != QEvent::Close);
  return true;
}

}  // namespace pendra
