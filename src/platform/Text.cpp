#include "platform/Text.h"

namespace pendra {

QString formatted(QStringView pattern, std::initializer_list<QStringView> values) {
  QString text;
  qsizetype from = 0;
  for (const QStringView value : values) {
    const qsizetype mark = pattern.indexOf(u"%@", from);
    Q_ASSERT_X(mark >= 0, "formatted", "more values than places");
    if (mark < 0) break;
    text += pattern.mid(from, mark - from);
    text += value;
    from = mark + 2;
  }
  return text += pattern.mid(from);
}

}  // namespace pendra
