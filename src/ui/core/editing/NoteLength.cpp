#include "ui_core/NoteLength.h"

#include "platform/Preferences.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

bool isTooLong(const QString& note) { return note.size() > kVantorNoteLimit; }

}  // namespace

void showNotesLength(LengthLabel& label, const QString& note) {
  label.showLength(QString::number(note.size()), isTooLong(note));
}

void showNoteLengthWarning(Session& session) {
  UserDefaults& defaults = session.ports().defaults;
  if (!defaults.text(preferences::kNoteLengthWarning).value_or(QString()).isEmpty()) return;
  session.ports().alerts.runAlert(
      {.message = tr("Note exceeds Vantor limits."),
       .informative = tr("Notes on an activity are limited to 99 characters in Vantor. Longer notes will be "
                         "saved in Pendra and shortened to 99 characters in Vantor.")});
  defaults.setText(preferences::kNoteLengthWarning, QStringLiteral("YES"));
}

void followNote(Session& session, LengthLabel& label, const QString& note) {
  showNotesLength(label, note);
  if (isTooLong(note)) showNoteLengthWarning(session);
}

}  // namespace pendra
