#include "ui/AccessKeys.h"

#include <QAbstractButton>
#include <QLabel>
#include <QMenuBar>

namespace pendra {

namespace {

/// A title that has got its letter already, as it was before.
QString plain(const QString& title) {
  QString words;
  for (qsizetype at = 0; at < title.size(); ++at) {
    if (title[at] == u'&' && ++at == title.size()) break;
    words += title[at];
  }
  return words;
}

QSet<QChar> lettersOfMenus(const QWidget& window) {
  QSet<QChar> letters;
  const auto* bar = window.findChild<QMenuBar*>();
  if (!bar) return letters;
  for (const QAction* menu : bar->actions()) {
    const qsizetype mark = menu->text().indexOf(u'&');
    if (mark >= 0 && mark + 1 < menu->text().size()) letters << menu->text()[mark + 1].toLower();
  }
  return letters;
}

}  // namespace

QString withoutAccessKey(QString title) { return title.replace(u'&', QStringLiteral("&&")); }

QString withAccessKey(const QString& title, QSet<QChar>& taken) {
  for (const bool anywhere : {false, true}) {
    for (qsizetype at = 0; at < title.size(); ++at) {
      const QChar letter = title[at].toLower();
      const bool beginsWord = at == 0 || title[at - 1].isSpace();
      if (!letter.isLetter() || taken.contains(letter) || !(anywhere || beginsWord)) continue;
      taken.insert(letter);
      return withoutAccessKey(title.first(at)) + u'&' + withoutAccessKey(title.sliced(at));
    }
  }
  return withoutAccessKey(title);
}

void giveAccessKeys(QWidget& window) {
  QSet<QChar> taken = lettersOfMenus(window);
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    if (auto* label = qobject_cast<QLabel*>(widget); label && label->buddy()) {
      label->setText(withAccessKey(plain(label->text()), taken));
    } else if (auto* button = qobject_cast<QAbstractButton*>(widget); button && !button->text().isEmpty()) {
      button->setText(withAccessKey(plain(button->text()), taken));
    }
  }
}

}  // namespace pendra
