#include <QStringDecoder>

#include "link/SetupFlow.h"
#include "platform/Text.h"

namespace pendra {

namespace {

int hexDigit(char digit) {
  const int value = QByteArray(1, digit).toInt(nullptr, 16);
  return value == 0 && digit != '0' ? -1 : value;
}

}  // namespace

std::optional<QString> percentDecoded(const QString& text) {
  const QByteArray escaped = text.toUtf8();
  QByteArray bytes;
  for (qsizetype at = 0; at < escaped.size(); ++at) {
    if (escaped[at] != '%') {
      bytes += escaped[at];
      continue;
    }
    if (at + 2 >= escaped.size()) return std::nullopt;
    const int high = hexDigit(escaped[at + 1]);
    const int low = hexDigit(escaped[at + 2]);
    if (high < 0 || low < 0) return std::nullopt;
    bytes += static_cast<char>(high * 16 + low);
    at += 2;
  }
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  const QString decoded = decoder(bytes);
  return decoder.hasError() ? std::nullopt : std::optional(decoded);
}

QString documentNameFor(const QString& company, const QString& employee) {
  QString piece = company.sliced(company.lastIndexOf(u'/') + 1);
  if (const auto dot = piece.lastIndexOf(u'.'); dot > 0) piece.truncate(dot);
  const QString name = formatted(u"%@-%@.pdr", {piece, employee});
  return percentDecoded(name).value_or(name);
}

}  // namespace pendra
