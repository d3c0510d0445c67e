#include "ui/QtAlerts.h"

#include <QAbstractButton>
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

constexpr const char* kAnswerProperty = "pendraAnswer";

/// The answer of a box that was closed; the escape button's when no button was pressed.
int answerOf(const QMessageBox& box, const Alert& alert) {
  if (const QAbstractButton* pressed = box.clickedButton()) return pressed->property(kAnswerProperty).toInt();
  return kFirstButton + static_cast<int>(alert.buttons.size()) - 1;
}

/// Adds the buttons from the last to the first, so that the affirmative one stands at the right.
void addButtons(QMessageBox& box, const Alert& alert) {
  const int count = static_cast<int>(alert.buttons.size());
  const bool destroys = alert.style == Alert::Style::Critical && count > 1;
  for (int index = count - 1; index >= 0; --index) {
    const QString& title = alert.buttons[index];
    QPushButton* button = box.addButton(title, QMessageBox::ActionRole);
    button->setProperty(kAnswerProperty, kFirstButton + index);
    button->setAccessibleName(title);
    if (index == count - 1) box.setEscapeButton(button);
    if (index == (destroys || alert.returnCancels ? count - 1 : 0)) box.setDefaultButton(button);
    // What stands out is what people came for, and neither destroying nor turning back is that.
    if (destroys || alert.returnCancels) button->setProperty(kPrimaryProperty, false);
    if (!destroys) continue;
    if (index == 0) button->setProperty(kDestructiveProperty, true);
  }
}

void fill(QMessageBox& box, const Alert& alert) {
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
  QMessageBox box(frontWindow());
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
  auto* box = new QMessageBox(window);
  fill(*box, alert);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setWindowModality(Qt::WindowModal);
  QObject::connect(box, &QDialog::finished, box, [box, alert, answered = std::move(answered)] {
    if (answered) answered(answerOf(*box, alert));
  });
  box->open();
}

}  // namespace pendra
