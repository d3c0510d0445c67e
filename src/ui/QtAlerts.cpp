#include "ui/QtAlerts.h"

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>

#include "store/Edit.h"
#include "ui/AccessKeys.h"
#include "ui/Buttons.h"
#include "ui/FrontWindow.h"
#include "ui/HelpPlace.h"
#include "ui/Theme.h"
#include "ui_core/HelpAnchors.h"

namespace pendra {

namespace {

constexpr int kIconSize = 32;
constexpr int kWordsWidth = 340;

QColor iconColour(Alert::Style style, const Colours& colours) {
  switch (style) {
    case Alert::Style::Warning:
      return colours.notice;
    case Alert::Style::Informational:
      return colours.link;
    case Alert::Style::Critical:
      return colours.warning;
  }
  return colours.text;
}

/// A disc with the letter "i" for news, else with an exclamation mark.
QPixmap iconOf(Alert::Style style, const QWidget& box) {
  const Colours& colours = Theme::colours(box.palette());
  QPixmap icon(QSize(kIconSize, kIconSize) * box.devicePixelRatio());
  icon.setDevicePixelRatio(box.devicePixelRatio());
  icon.fill(Qt::transparent);
  QPainter painter(&icon);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(iconColour(style, colours));
  const QRect disc(0, 0, kIconSize, kIconSize);
  painter.drawEllipse(disc);
  QFont font = Theme::cellFont();
  font.setPixelSize(kIconSize * 5 / 8);
  font.setWeight(QFont::Bold);
  painter.setFont(font);
  painter.setPen(colours.base);
  painter.drawText(disc, Qt::AlignCenter,
                   style == Alert::Style::Informational ? QStringLiteral("i") : QStringLiteral("!"));
  return icon;
}

/// A question that comes while somebody types is not answered by what they type: a letter presses a button
/// with Alt only, and a blank or Return that follows on letters presses none.
class Box final : public QMessageBox {
 public:
  using QMessageBox::QMessageBox;

  void watch(QAbstractButton& button) { button.installEventFilter(this); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const bool isKey = event->type() == QEvent::KeyPress;
    return (isKey && isTypedOn(static_cast<QKeyEvent&>(*event))) || QMessageBox::eventFilter(watched, event);
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (!isTypedOn(*event)) QMessageBox::keyPressEvent(event);
  }

 private:
  bool isTypedOn(const QKeyEvent& event) {
    if (event.modifiers() & (Qt::AltModifier | Qt::ControlModifier | Qt::MetaModifier)) return false;
    const int key = event.key();
    const bool mayPress = key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
    const bool isTyped = mayPress ? typed_.isValid() && !typed_.hasExpired(kBetweenTyped)
                                  : !event.text().isEmpty() && event.text().front().isPrint();
    if (isTyped) typed_.start();
    return isTyped;
  }

  static constexpr qint64 kBetweenTyped = 1000;  ///< milliseconds at most, of keys that are one text
  QElapsedTimer typed_;
};

constexpr const char* kAnswerProperty = "pendraAnswer";

/// The answer of a box that was closed; the escape button's when no button was pressed.
int answerOf(const QMessageBox& box, const Alert& alert) {
  if (const QAbstractButton* pressed = box.clickedButton()) return pressed->property(kAnswerProperty).toInt();
  return kFirstButton + static_cast<int>(alert.buttons.size()) - 1;
}

/// Adds the buttons from the last to the first, so that the affirmative one stands at the right.
void addButtons(Box& box, const Alert& alert) {
  const int count = static_cast<int>(alert.buttons.size());
  const bool destroys = alert.style == Alert::Style::Critical && count > 1;
  for (int index = count - 1; index >= 0; --index) {
    const QString& title = alert.buttons[index];
    QPushButton* button = box.addButton(title, QMessageBox::ActionRole);
    button->setProperty(kAnswerProperty, kFirstButton + index);
    button->setAccessibleName(title);
    box.watch(*button);
    if (index == count - 1) box.setEscapeButton(button);
    if (index == (destroys || alert.returnCancels ? count - 1 : 0)) box.setDefaultButton(button);
    // What stands out is what people came for, and neither destroying nor turning back is that.
    if (destroys || alert.returnCancels) button->setProperty(kPrimaryProperty, false);
    if (!destroys) continue;
    if (index == 0) button->setProperty(kDestructiveProperty, true);
  }
}

void fill(Box& box, const Alert& alert) {
  box.setWindowTitle(QObject::tr("Pendra"));
  box.setTextFormat(Qt::PlainText);
  box.setIconPixmap(iconOf(alert.style, box));
  box.setText(alert.message);
  box.setInformativeText(alert.informative);
  if (auto* message = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
    QFont font = Theme::cellFont();
    font.setWeight(QFont::DemiBold);
    message->setFont(font);
  }
  if (auto* words = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"))) {
    words->setTextFormat(Qt::PlainText);
    // Else the words are squeezed under a short message.
    words->setMinimumWidth(
        std::min(kWordsWidth, words->fontMetrics().horizontalAdvance(alert.informative) + 1));
  }
  addButtons(box, alert);
  giveAccessKeys(box);
  // Whoever is asked sees at once what Return answers.
  box.setAttribute(Qt::WA_KeyboardFocusChange);
  if (const QString anchor = help::anchorOf(alert.topic); !anchor.isEmpty()) setHelpAnchor(box, anchor);
}

}  // namespace

int QtAlerts::runAlert(const Alert& alert) {
  Q_ASSERT_X(!editInProgress(), "alert", "whoever edits has asked before");
  Box box(frontWindow());
  fill(box, alert);
  box.setWindowModality(Qt::ApplicationModal);
  const ModalDepth::Run run(modals_);
  box.exec();
  return answerOf(box, alert);
}

QWidget* QtAlerts::windowOf(const Alert& alert) const {
  if (alert.owner == Alert::Owner::FrontWindow) return frontWindow();
  return timerWindow_ ? timerWindow_() : nullptr;
}

void QtAlerts::beginSheet(const Alert& alert, std::function<void(int)> answered) {
  QWidget* const window = windowOf(alert);
  if (alert.owner != Alert::Owner::FrontWindow) {
    if (!window || isBlocked(*window)) return;
    window->raise();
    window->activateWindow();
  }
  auto* box = new Box(window);
  fill(*box, alert);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setWindowModality(Qt::WindowModal);
  QObject::connect(box, &QDialog::finished, box, [box, alert, answered = std::move(answered)] {
    if (answered) answered(answerOf(*box, alert));
  });
  box->open();
}

}  // namespace pendra
