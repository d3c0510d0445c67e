#include "ui/MenuReasons.h"

#include <QHelpEvent>
#include <QMenu>
#include <QToolTip>

namespace pendra {

namespace {

const char* const kReason = "reason";

/// Qt's own tool tips of a menu repeat the titles of the items that have none.
class Reasons final : public QObject {
 public:
  explicit Reasons(QMenu& menu) : QObject(&menu), menu_(menu) { menu.installEventFilter(this); }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::ToolTip) return false;
    const auto& help = static_cast<QHelpEvent&>(*event);
    const QAction* item = menu_.actionAt(help.pos());
    QToolTip::showText(help.globalPos(), item ? item->property(kReason).toString() : QString(), &menu_);
    return true;
  }

 private:
  QMenu& menu_;
};

}  // namespace

void giveReason(QAction& item, const QString& reason) {
  item.setProperty(kReason, reason);
  item.setStatusTip(reason);  // which assistive technology reads as what there is to know about the item
}

void showIsOn(QAction& item, std::optional<bool> isOn) {
  item.setCheckable(isOn.has_value());
  item.setChecked(isOn == true);
}

void showReasons(QMenu& menu) { new Reasons(menu); }

}  // namespace pendra
