#include "Words.h"

#include <array>

namespace pendra::words {

namespace {

const std::array kCustomers{
    QStringLiteral("Bäckerei Größe"),
    QStringLiteral("Acme"),
    QStringLiteral("Smith"),
    QStringLiteral("Ärger GmbH"),
    QStringLiteral("Zed"),
    QStringLiteral("A*"),
    QStringLiteral("Bob \"B\" Ltd"),
    QStringLiteral("Who?"),
    QStringLiteral("Øystein & Sønner"),
    QStringLiteral("O’Brien LLP"),
    QStringLiteral("Müller, Weiß & Co."),
    QStringLiteral("Café Zoë"),
    QStringLiteral("All"),
    QStringLiteral("acme"),
    QStringLiteral("Łódź Papier"),
    QStringLiteral("Stadtwerke Süßen, Abteilung Netze und Zähler"),
};
const std::array kFamilies{
    QStringLiteral("Baker"),     QStringLiteral("Möller"), QStringLiteral("Dupont"),
    QStringLiteral("García"),    QStringLiteral("Jensen"), QStringLiteral("Kowalski"),
    QStringLiteral("Lindström"), QStringLiteral("Nagy"),   QStringLiteral("Öztürk"),
    QStringLiteral("Parker"),    QStringLiteral("Rossi"),  QStringLiteral("Yılmaz"),
};
const std::array kTrades{
    QStringLiteral("Architects"), QStringLiteral("Bau"),    QStringLiteral("Consulting"),
    QStringLiteral("Druckerei"),  QStringLiteral("Energy"), QStringLiteral("Gärtnerei"),
    QStringLiteral("Legal"),      QStringLiteral("Möbel"),  QStringLiteral("Software"),
};
const std::array kJobs{
    QStringLiteral("Roof"),        QStringLiteral("Dach"),         QStringLiteral("Attic"),
    QStringLiteral("Website"),     QStringLiteral("Kellerausbau"), QStringLiteral("Audit"),
    QStringLiteral("Phase \"A\""), QStringLiteral("Büro Nord"),    QStringLiteral("North wing"),
    QStringLiteral("Tax return"),  QStringLiteral("Umzug"),        QStringLiteral("Training"),
};
const std::array kServices{
    QStringLiteral("Beratung"),
    QStringLiteral("Design"),
    QStringLiteral("Build"),
    QStringLiteral("Support"),
    QStringLiteral("Entwurf & Prüfung"),
    QStringLiteral("Travel"),
    QStringLiteral("Review"),
    QStringLiteral("Übersetzung"),
};
const std::array kActivityNotes{
    QStringLiteral("Measure on site, bring the laser and the old drawings, ask about the second floor, and "
                   "send the offer for the annex before Friday noon"),
    QStringLiteral("Angebot für den Anbau, zweiter Entwurf"),
    QStringLiteral("Sketches for the north side"),
    QStringLiteral("Weekly call"),
    QStringLiteral("Hotline"),
    QString(),
    QStringLiteral("Proofs <b>and</b> print & binding"),
    QString(),
};
const std::array kEntryNotes{
    QStringLiteral("Call with the builder"),
    QStringLiteral("Änderungen nach Rückfrage eingearbeitet"),
    QStringLiteral("Said \"later\", will ring back"),
    QStringLiteral("Plan A\tPlan B\tboth open"),
    QStringLiteral("First floor done\nsecond floor tomorrow"),
    QStringLiteral("Drove there and back, 84 km"),
    QStringLiteral("Mit Zoë abgestimmt"),
};

const std::array kPlainCustomers{
    QStringLiteral("Hollins Architects"), QStringLiteral("Fernwood Clinic"),
    QStringLiteral("Marsh & Lowe"),       QStringLiteral("Tidewater Press"),
    QStringLiteral("Calder Energy"),      QStringLiteral("Juniper Studio"),
    QStringLiteral("Northgate School"),   QStringLiteral("Brightside Bakery"),
    QStringLiteral("Pell Instruments"),   QStringLiteral("Okafor Legal"),
};
const std::array kPlainJobs{
    QStringLiteral("Website"),       QStringLiteral("Annual report"), QStringLiteral("Brochure"),
    QStringLiteral("Spring issue"),  QStringLiteral("Migration"),     QStringLiteral("Exhibition"),
    QStringLiteral("Summer course"), QStringLiteral("New menu"),      QStringLiteral("Handbook"),
    QStringLiteral("Archive"),
};
const std::array kPlainServices{
    QStringLiteral("Consulting"), QStringLiteral("Design"),  QStringLiteral("Development"),
    QStringLiteral("Editing"),    QStringLiteral("Meeting"), QStringLiteral("Research"),
    QStringLiteral("Travel"),
};
const std::array kPlainActivityNotes{
    QStringLiteral("Weekly call"), QStringLiteral("Second draft"),         QStringLiteral("Sketches"),
    QStringLiteral("Corrections"), QStringLiteral("Prepare the workshop"), QString(),
};
const std::array kPlainEntryNotes{
    QStringLiteral("Call about the schedule"),
    QStringLiteral("Changes after the review"),
    QStringLiteral("On site"),
    QStringLiteral("First three chapters"),
};

/// The number's choice of a list, and from the second round on the round as a number behind it.
template <const auto& kNames>
QString inRounds(int number) {
  const int size = static_cast<int>(kNames.size());
  const QString& name = kNames[static_cast<std::size_t>(number % size)];
  return number < size ? name : name + u' ' + QString::number(number / size + 1);
}

QString tryingCustomer(int number) {
  const int known = static_cast<int>(kCustomers.size());
  if (number < known) return kCustomers[static_cast<std::size_t>(number)];
  const int composed = number - known;
  const auto trade = static_cast<std::size_t>(composed) % kTrades.size();
  return inRounds<kFamilies>(composed / static_cast<int>(kTrades.size())) + u' ' + kTrades[trade];
}

}  // namespace

const Words& trying() {
  static const Words words{tryingCustomer, inRounds<kJobs>, inRounds<kServices>, kActivityNotes, kEntryNotes};
  return words;
}

const Words& everyday() {
  static const Words words{inRounds<kPlainCustomers>, inRounds<kPlainJobs>, inRounds<kPlainServices>,
                           kPlainActivityNotes, kPlainEntryNotes};
  return words;
}

}  // namespace pendra::words
