#include "PropertyListWriter.h"

#include <algorithm>
#include <bit>
#include <cstring>

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

PropertyListWriter::PropertyListWriter(quint32 greatestCount, qsizetype expectedSize)
    : bytes_(expectedSize, Qt::Uninitialized),
      at_(bytes_.data()),
      end_(at_ + bytes_.size()),
      offsets_(std::make_unique_for_overwrite<quint32[]>(greatestCount)),
      referenceWidth_(widthFor(greatestCount)) {
  std::memcpy(room(8), "bplist00", 8);
  at_ += 8;
}

int PropertyListWriter::referenceWidth(quint32 count) { return widthFor(count); }

void PropertyListWriter::grow(qsizetype size) {
  const qsizetype used = at_ - bytes_.constData();
  bytes_.resize(2 * (used + size));
  at_ = bytes_.data() + used;
  end_ = bytes_.data() + bytes_.size();
}

void PropertyListWriter::sized(unsigned kind, quint64 count) {
  if (count < 15) {
    byte(kind << 4 | static_cast<unsigned>(count));
    return;
  }
  const int width = widthFor(count);
  byte(kind << 4 | 15);
  byte(0x10 | powerOf(width));
  integerBytes(count, width);
}

void PropertyListWriter::text(QStringView text) {
  const qsizetype length = text.size();
  char* const head = room(length + 16);
  sized(5, static_cast<quint64>(length));
  // Taken for ASCII at first, as most texts are.
  const char16_t* const from = text.utf16();
  char* const to = at_;
  char16_t bits = 0;
  for (qsizetype i = 0; i < length; ++i) {
    bits |= from[i];
    to[i] = static_cast<char>(from[i]);
  }
  at_ += length;
  if (bits < 0x80) return;
  at_ = head;
  sized(6, static_cast<quint64>(length));
  qToBigEndian<quint16>(from, length, room(2 * length));
  at_ += 2 * length;
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

QByteArray PropertyListWriter::finish(quint32 count) {
  const auto table = static_cast<quint64>(at_ - bytes_.constData());
  const int width = widthFor(table);
  room((count + 1) * qsizetype{width} + 32);
  for (quint32 i = 0; i < count; ++i) integerBytes(offsets_[i], width);
  std::fill_n(room(6), 6, '\0');
  at_ += 6;
  byte(static_cast<unsigned>(width));
  byte(static_cast<unsigned>(referenceWidth_));
  for (const quint64 number : {quint64{count}, quint64{0}, table}) integerBytes(number, 8);
  bytes_.truncate(at_ - bytes_.constData());
  return std::move(bytes_);
}

}  // namespace pendra
