#include "ui/QtAlerts.h"

#include <QAbstractButton>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include "ui/FrontWindow.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

QMessageBox::Icon iconOf(Alert::Style style) {
  switch (style) {
    case Alert::Style::Warning:
      return QMessageBox::Warning;
    case Alert::Style::Informational:
      return QMessageBox::Information;
    case Alert::Style::Critical:
      return QMessageBox::Critical;
  }
  return QMessageBox::NoIcon;
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
    if (title == u"Cancel" || count == 1) box.setEscapeButton(button);
    if (index == (destroys ? count - 1 : 0)) box.setDefaultButton(button);
  }
}

void fill(QMessageBox& box, const Alert& alert) {
  box.setWindowTitle(QObject::tr("Pendra"));
  box.setTextFormat(Qt::PlainText);
  box.setIcon(iconOf(alert.style));
  box.setText(alert.message);
  box.setInformativeText(alert.informative);
  if (auto* message = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
    QFont font = Theme::cellFont();
    font.setWeight(QFont::DemiBold);
    message->setFont(font);
  }
  if (auto* words = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"))) {
    words->setTextFormat(Qt::PlainText);
  }
  addButtons(box, alert);
}

}  // namespace

int QtAlerts::runAlert(const Alert& alert) {
  QMessageBox box(frontWindow());
  fill(box, alert);
  box.setWindowModality(Qt::ApplicationModal);
  const ModalDepth::Run run(modals_);
  box.exec();
  return answerOf(box, alert);
}

void QtAlerts::beginSheet(const Alert& alert, std::function<void(int)> answered) {
  auto* box = new QMessageBox(frontWindow());
  fill(*box, alert);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setWindowModality(Qt::WindowModal);
  QObject::connect(box, &QDialog::finished, box, [box, alert, answered = std::move(answered)] {
    if (answered) answered(answerOf(*box, alert));
  });
  box->open();
}

}  // namespace pendra
