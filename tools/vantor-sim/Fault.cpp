#include "Fault.h"

#include <QStringList>
#include <array>
#include <utility>

namespace pendra {

std::optional<Fault> Fault::named(const QString& text) {
  using Named = std::pair<QStringView, Kind>;
  static constexpr std::array<Named, 8> kNames{Named{u"late", Kind::Late},
                                               Named{u"wrong-name", Kind::WrongName},
                                               Named{u"no-answer", Kind::NoAnswer},
                                               Named{u"garbage", Kind::Garbage},
                                               Named{u"die-in-list", Kind::DieInList},
                                               Named{u"die-before-record", Kind::DieBeforeRecord},
                                               Named{u"die-after-record", Kind::DieAfterRecord},
                                               Named{u"slow-read", Kind::SlowRead}};
  const QStringList parts = text.split(u'=');
  for (const auto& [name, kind] : kNames) {
    if (parts.first() != name) continue;
    Fault fault;
    fault.kind = kind;
    if (parts.size() > 1) fault.delay = std::chrono::milliseconds(parts[1].toInt());
    return fault;
  }
  return {};
}

}  // namespace pendra
