#include "HoursChartAccessible.h"

#include <QPointer>

namespace pendra {

namespace {

/// One bar: its name says when, its description what.
class BarAccessible final : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  BarAccessible(HoursChart* chart, int bar) : chart_(chart), bar_(bar) {}

  [[nodiscard]] int bar() const { return bar_; }
  [[nodiscard]] bool isValid() const override { return chart_ && bar_ < chart_->bars(); }
  [[nodiscard]] QObject* object() const override { return nullptr; }
  [[nodiscard]] QWindow* window() const override {
    return isValid() ? chart_->window()->windowHandle() : nullptr;
  }
  [[nodiscard]] QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(chart_);
  }
  [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
  [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  [[nodiscard]] int childCount() const override { return 0; }
  [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  [[nodiscard]] QString text(QAccessible::Text what) const override {
    if (!isValid()) return {};
    if (what == QAccessible::Name) return chart_->nameOf(bar_);
    return what == QAccessible::Description ? chart_->descriptionOf(bar_) : QString();
  }
  void setText(QAccessible::Text, const QString&) override {}
  [[nodiscard]] QRect rect() const override {
    if (!isValid()) return {};
    const QRect column = chart_->columnOf(bar_);
    return {chart_->mapToGlobal(column.topLeft()), column.size()};
  }
  [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ListItem; }
  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state;
    state.focusable = isValid();
    state.focused = isValid() && chart_->hasFocus() && chart_->currentBar() == bar_;
    state.invisible = !isValid() || !chart_->isVisible();
    return state;
  }
  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
  }

  [[nodiscard]] QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
  void doAction(const QString& name) override {
    if (!isValid()) return;
    if (name == setFocusAction()) {
      chart_->setFocus();
      chart_->setCurrentBar(bar_);
    }
    // Queued: the press brings another window to the front, and who asked for it waits for an answer.
    if (name == pressAction()) {
      QMetaObject::invokeMethod(
          chart_, [chart = chart_, bar = bar_] { chart->pressBar(bar); }, Qt::QueuedConnection);
    }
  }
  [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

 private:
  QPointer<HoursChart> chart_;
  int bar_;
};

}  // namespace

HoursChartAccessible::~HoursChartAccessible() {
  for (const QAccessible::Id bar : std::as_const(bars_)) QAccessible::deleteAccessibleInterface(bar);
}

void HoursChartAccessible::install() {
  static const bool isInstalled = [] {
    QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
      auto* chart = qobject_cast<HoursChart*>(object);
      return chart ? new HoursChartAccessible(chart) : nullptr;
    });
    return true;
  }();
  std::ignore = isInstalled;
}

QAccessibleInterface* HoursChartAccessible::child(int index) const {
  if (index < 0 || index >= childCount()) return nullptr;
  auto known = bars_.constFind(index);
  if (known == bars_.constEnd()) {
    known = bars_.insert(index, QAccessible::registerAccessibleInterface(new BarAccessible(chart(), index)));
  }
  return QAccessible::accessibleInterface(*known);
}

int HoursChartAccessible::indexOfChild(const QAccessibleInterface* child) const {
  const auto* bar = dynamic_cast<const BarAccessible*>(child);
  return bar ? bar->bar() : -1;
}

QAccessibleInterface* HoursChartAccessible::childAt(int x, int y) const {
  return child(chart()->barAt(chart()->mapFromGlobal(QPoint(x, y))));
}

QAccessibleInterface* HoursChartAccessible::focusChild() const {
  return chart()->hasFocus() ? child(chart()->currentBar()) : nullptr;
}

}  // namespace pendra
