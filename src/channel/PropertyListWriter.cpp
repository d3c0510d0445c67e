#include "PropertyListWriter.h"

#include <QtEndian>
#include <algorithm>
#include <bit>

namespace pendra {
namespace {

/// The bytes that every reader of property lists takes for a number up to `greatest`.
int widthFor(quint64 greatest) {
  if (greatest <= 0xff) return 1;
  if (greatest <= 0xffff) return 2;
  return greatest <= 0xffffffff ? 4 : 8;
}

unsigned powerOf(int width) { return static_cast<unsigned>(std::countr_zero(static_cast<unsigned>(width))); }

}  // namespace

PropertyListWriter::PropertyListWriter(quint32 count, qsizetype expectedSize)
    : bytes_("bplist00"), offsets_(count), referenceWidth_(widthFor(count)) {
  bytes_.reserve(expectedSize);
}

void PropertyListWriter::integerBytes(quint64 number, int width) {
  std::array<char, 8> bytes{};
  qToBigEndian(number << (64 - 8 * width), bytes.data());
  bytes_.append(bytes.data(), width);
}

void PropertyListWriter::sized(unsigned kind, quint64 count) {
  if (count < 15) return byte(kind << 4 | static_cast<unsigned>(count));
  const int width = widthFor(count);
  byte(kind << 4 | 15);
  byte(0x10 | powerOf(width));
  integerBytes(count, width);
}

void PropertyListWriter::text(QStringView text) {
  const bool isAscii = std::all_of(text.begin(), text.end(), [](QChar one) { return one.unicode() < 0x80; });
  sized(isAscii ? 5 : 6, static_cast<quint64>(text.size()));
  const qsizetype at = bytes_.size();
  bytes_.resize(at + (isAscii ? text.size() : 2 * text.size()));
  char* const to = bytes_.data() + at;
  if (isAscii) {
    std::transform(text.begin(), text.end(), to, [](QChar one) { return static_cast<char>(one.unicode()); });
  } else {
    qToBigEndian<quint16>(text.utf16(), text.size(), to);
  }
}

void PropertyListWriter::integer(qint64 number) {
  // Only eight bytes carry a sign.
  const int width = number < 0 ? 8 : widthFor(static_cast<quint64>(number));
  byte(0x10 | powerOf(width));
  integerBytes(static_cast<quint64>(number), width);
}

void PropertyListWriter::real(double number) {
  byte(0x23);
  integerBytes(std::bit_cast<quint64>(number), 8);
}

void PropertyListWriter::uid(quint32 number) {
  const int width = widthFor(number);
  byte(0x80 | static_cast<unsigned>(width - 1));
  integerBytes(number, width);
}

QByteArray PropertyListWriter::finish() {
  const auto table = static_cast<quint64>(bytes_.size());
  const int width = widthFor(table);
  for (const quint32 offset : offsets_) integerBytes(offset, width);
  bytes_.append(6, '\0');
  byte(static_cast<unsigned>(width));
  byte(static_cast<unsigned>(referenceWidth_));
  for (const quint64 number : {quint64{offsets_.size()}, quint64{0}, table}) integerBytes(number, 8);
  return std::move(bytes_);
}

}  // namespace pendra
