#include "ui/PanelIcon.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <cmath>

#include "model/ActivityTitle.h"
#include "platform/Text.h"
#include "ui/Symbols.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kSign = 16;

/// Panels take the letter behind an underscore for a key. Qt writes one for the first ampersand, and for no
/// other.
QString plain(QString title) {
  title.replace(u'_', QStringLiteral("__"));
  return title.contains(u'&') ? u'&' + title : title;
}

QString titleOf(const Activity& activity) {
  const QString title = activityTitle(activity);
  return title.isEmpty() ? shortTitle(activity) : title;
}

/// One desktop's panel is dark whatever its windows are.
bool isPanelDark() {
  return Theme::isDark(QApplication::palette()) || qgetenv("XDG_CURRENT_DESKTOP").contains("GNOME");
}

}  // namespace

PanelIcon::PanelIcon(PanelState& state, DesktopPanel& panel, Deeds deeds)
    : state_(state), panel_(panel), deeds_(std::move(deeds)) {
  menu_.setObjectName(QStringLiteral("panelMenu"));
  menu_.setAccessibleName(tr("Pendra"));
  tip_.setSingleShot(true);
  tip_.setTimerType(Qt::VeryCoarseTimer);
  connect(&tip_, &QTimer::timeout, this, &PanelIcon::showTip);
  seconds_.setInterval(std::chrono::seconds(1));
  connect(&seconds_, &QTimer::timeout, this, &PanelIcon::showLengths);
  menu_.installEventFilter(this);
  connect(&menu_, &QMenu::aboutToShow, this, &PanelIcon::aboutToShowMenu);
  connect(&menu_, &QMenu::aboutToHide, &seconds_, &QTimer::stop);
  observations_.push_back(state_.changes().observe([this] { show(); }));
  observations_.push_back(panel_.changes().observe([this] { followPanel(); }));
  followPanel();
}

PanelIcon::~PanelIcon() = default;

bool PanelIcon::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::PaletteChange) {
    shown_.reset();  // the sign is drawn for the look of the desktop
    show();
  }
  return false;
}

/// The toolkit decides once how an icon comes into a panel, so none is made before there is one.
void PanelIcon::followPanel() {
  icon_.reset();
  shown_.reset();
  tip_.stop();
  if (!panel_.isThere()) return;
  icon_ = std::make_unique<QSystemTrayIcon>();
  icon_->setContextMenu(&menu_);
  connect(icon_.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
    if (reason == QSystemTrayIcon::Trigger) deeds_.open();
  });
  show();
  icon_->show();
}

void PanelIcon::show() {
  if (!icon_) return;
  const PanelSign sign = state_.sign();
  if (shown_ != sign) icon_->setIcon(panelIcon(sign, isPanelDark()));
  shown_ = sign;
  showTip();
  fillMenu();
}

void PanelIcon::showTip() {
  if (const QString tip = state_.toolTip(); icon_->toolTip() != tip) icon_->setToolTip(tip);
  tip_.stop();
  if (const auto seconds = state_.nextMinute()) {
    tip_.start(std::chrono::milliseconds(std::lround((*seconds + 0.5) * 1000)));
  }
}

QAction* PanelIcon::add(const QString& title, std::function<void()> deed) {
  QAction* item = menu_.addAction(title);
  connect(item, &QAction::triggered, this, std::move(deed));
  return item;
}

/// A panel may have been told of the items long ago; only what goes on by itself is told anew.
void PanelIcon::aboutToShowMenu() {
  if (state_.refusal() != refusal_ || menu_.isEmpty()) fillMenu();
  showLengths();
  if (!lengths_.empty()) seconds_.start();
}

void PanelIcon::fillMenu() {
  menu_.clear();
  lengths_.clear();
  refusal_ = state_.refusal();
  const auto running = state_.running();
  if (!refusal_.isEmpty()) {
    menu_.addAction(formatted(tr("Nothing can be changed: %@"), {refusal_}))->setEnabled(false);
    menu_.addSeparator();
  }
  for (const RunningTimer& timer : running) addRunning(timer);
  menu_.addSeparator();
  for (Activity* activity : state_.latest()) {
    QAction* item =
        add(plain(titleOf(*activity)), [this, which = Ref<Activity>(activity)] { state_.start(which); });
    item->setIcon(signOf(false));
    item->setEnabled(refusal_.isEmpty());
  }
  menu_.addSeparator();
  add(tr("Stop All"), [this] { state_.stopAll(); })->setEnabled(refusal_.isEmpty() && !running.empty());
  add(tr("Quick Entry…"), deeds_.quickEntry)->setEnabled(refusal_.isEmpty() && state_.sign().hasDocument);
  menu_.addSeparator();
  add(tr("Open Pendra"), deeds_.open);
  add(tr("Quit Pendra"), deeds_.quit);
}

void PanelIcon::addRunning(const RunningTimer& timer) {
  QAction* item = add({}, [this, which = timer.activity] { state_.stop(which); });
  item->setIcon(signOf(true));
  item->setEnabled(refusal_.isEmpty());
  lengths_.emplace_back(item, timer);
  showLengths();
}

void PanelIcon::showLengths() {
  for (const auto& [item, timer] : lengths_) {
    if (!timer.activity) continue;
    const QString title = formatted(u"%@\t%@", {plain(titleOf(*timer.activity)), timer.length()});
    if (item->text() != title) item->setText(title);
  }
}

QIcon PanelIcon::signOf(bool runs) const {
  QPixmap picture(QSize(kSign, kSign) * 2);
  picture.setDevicePixelRatio(2);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  const Colours& colours = Theme::colours(menu_.palette());
  drawSymbol(painter, QRectF(0, 0, kSign, kSign), runs ? Symbol::Pause : Symbol::Play,
             runs ? colours.running : colours.quiet);
  painter.end();
  return QIcon(picture);
}

}  // namespace pendra
