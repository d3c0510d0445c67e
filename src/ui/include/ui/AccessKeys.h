#pragma once

#include <QSet>
#include <QString>

class QWidget;

namespace pendra {

/// The title with the letter that Alt chooses it by: the first of a word that nothing before it has, else the
/// first letter that nothing has. An ampersand that is meant is doubled.
[[nodiscard]] QString withAccessKey(const QString& title, QSet<QChar>& taken);

/// The title as a menu or a button shows it: an ampersand that is meant is doubled.
[[nodiscard]] QString withoutAccessKey(QString title);

/// Gives every button of the window, and every label of a field, a letter of its own. What they are called by
/// assistive technology stays the plain words. To be called again when a title has changed.
void giveAccessKeys(QWidget& window);

}  // namespace pendra
