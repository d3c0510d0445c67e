#pragma once
// What people read is written here in English, and the English text is itself the key under which a
// translation holds it: no text has a number or a name of its own. What is stored, logged, sent or asked for
// by another program is no text in this sense and goes past all of this.
//
// Objects of Qt have a `tr` of their own; it means the same, and finds the same translation.

#include <QCoreApplication>
#include <QString>
#include <initializer_list>

namespace pendra {

/// The text in the language of whoever reads it; the English one where no translation has it. `meaning` tells
/// translators apart what English has one word for ("Start": a deed, or a moment).
QString tr(const char* english, const char* meaning = nullptr);

/// A text about so many of something: `one` about exactly one, else `many` with the number where "%Ln"
/// stands, grouped as the reader's country does it. A translation may have further forms of `many`. `values`
/// fill each
/// "%@" in turn, as `formatted` does.
QString counted(qint64 count, const char* one, const char* many,
                std::initializer_list<QStringView> values = {});

/// Loads Qt's own texts and Pendra's from `folder` ("pendra_de.qm") for the first of the reader's languages
/// that is there. Whoever has none reads English.
void installTranslations(QCoreApplication& application, const QString& folder);

}  // namespace pendra
