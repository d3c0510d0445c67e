#include "PropertyListWriter.h"

#include <QtEndian>
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

bool isAscii(QStringView text) {
  return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

}  // namespace

PropertyListWriter::PropertyListWriter(quint32 objectCount, qsizetype expectedSize)
    : bytes_(expectedSize, Qt::Uninitialized),
      objectCount_(objectCount),
      referenceWidth_(widthFor(objectCount)) {
  offsets_.reserve(objectCount);
  std::memcpy(room(8), "bplist00", 8);
}

int PropertyListWriter::referenceWidth(quint32 objectCount) { return widthFor(objectCount); }

char* PropertyListWriter::room(qsizetype size) {
  if (used_ + size > bytes_.size()) bytes_.resize(2 * (used_ + size));
  used_ += size;
  return bytes_.data() + used_ - size;
}

void PropertyListWriter::begin() { offsets_.push_back(static_cast<quint32>(used_)); }

void PropertyListWriter::integerBytes(quint64 number, int width) {
  char* at = room(width);
  switch (width) {
    case 1:
      *at = static_cast<char>(number);
      return;
    case 2:
      return qToBigEndian(static_cast<quint16>(number), at);
    case 4:
      return qToBigEndian(static_cast<quint32>(number), at);
    default:
      return qToBigEndian(number, at);
  }
}

void PropertyListWriter::sized(unsigned kind, quint64 count) {
  if (count < 15) {
    byte(kind << 4 | static_cast<unsigned>(count));
    return;
  }
  const int width = widthFor(count);
  byte(kind << 4 | 15);
  byte(0x10 | std::countr_zero(static_cast<unsigned>(width)));
  integerBytes(count, width);
}

void PropertyListWriter::text(QStringView text) {
  begin();
  if (isAscii(text)) {
    sized(5, static_cast<quint64>(text.size()));
    std::transform(text.begin(), text.end(), room(text.size()), [](QChar c) { return c.toLatin1(); });
    return;
  }
  sized(6, static_cast<quint64>(text.size()));
  qToBigEndian<quint16>(text.utf16(), text.size(), room(2 * text.size()));
}

void PropertyListWriter::integer(qint64 number) {
  begin();
  // Only eight bytes carry a sign.
  const int width = number < 0 ? 8 : widthFor(static_cast<quint64>(number));
  byte(0x10 | std::countr_zero(static_cast<unsigned>(width)));
  integerBytes(static_cast<quint64>(number), width);
}

void PropertyListWriter::real(double number) {
  begin();
  byte(0x23);
  integerBytes(std::bit_cast<quint64>(number), 8);
}

void PropertyListWriter::boolean(bool truth) {
  begin();
  byte(truth ? 9 : 8);
}

void PropertyListWriter::uid(quint32 number) {
  begin();
  const int width = widthFor(number);
  byte(0x80 | (width - 1));
  integerBytes(number, width);
}

void PropertyListWriter::arrayHead(quint32 count) {
  begin();
  sized(10, count);
}

void PropertyListWriter::dictionaryHead(quint32 count) {
  begin();
  sized(13, count);
}

void PropertyListWriter::reference(quint32 object) { integerBytes(object, referenceWidth_); }

QByteArray PropertyListWriter::finish() {
  Q_ASSERT(offsets_.size() == objectCount_);
  const auto table = static_cast<quint64>(used_);
  const int width = widthFor(table);
  for (const quint32 offset : offsets_) integerBytes(offset, width);
  std::memset(room(6), 0, 6);
  byte(width);
  byte(referenceWidth_);
  integerBytes(offsets_.size(), 8);
  integerBytes(0, 8);
  integerBytes(table, 8);
  bytes_.truncate(used_);
  return std::move(bytes_);
}

}  // namespace pendra
