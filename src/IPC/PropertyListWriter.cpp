#include "PropertyListWriter.h"

#include <QtEndian>
#include <bit>

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
    : objectCount_(objectCount), referenceWidth_(widthFor(objectCount)) {
  bytes_.reserve(expectedSize + objectCount * 4);
  offsets_.reserve(objectCount);
  bytes_.append("bplist00");
}

void PropertyListWriter::begin() { offsets_.push_back(static_cast<quint32>(bytes_.size())); }

void PropertyListWriter::integerBytes(quint64 number, int width) {
  const quint64 big = qToBigEndian(number);
  bytes_.append(std::bit_cast<std::array<char, 8>>(big).data() + 8 - width, width);
}

void PropertyListWriter::sized(unsigned kind, quint64 count) {
  if (count < 15) {
    bytes_.append(static_cast<char>(kind << 4 | count));
    return;
  }
  const int width = widthFor(count);
  bytes_.append(static_cast<char>(kind << 4 | 15));
  bytes_.append(static_cast<char>(0x10 | std::countr_zero(static_cast<unsigned>(width))));
  integerBytes(count, width);
}

void PropertyListWriter::text(QStringView text) {
  begin();
  if (isAscii(text)) {
    sized(5, static_cast<quint64>(text.size()));
    const qsizetype at = bytes_.size();
    bytes_.resize(at + text.size());
    std::transform(text.begin(), text.end(), bytes_.data() + at, [](QChar c) { return c.toLatin1(); });
    return;
  }
  sized(6, static_cast<quint64>(text.size()));
  const qsizetype at = bytes_.size();
  bytes_.resize(at + text.size() * 2);
  qToBigEndian<quint16>(text.utf16(), text.size(), bytes_.data() + at);
}

void PropertyListWriter::integer(qint64 number) {
  begin();
  // Only eight bytes carry a sign.
  const int width = number < 0 ? 8 : widthFor(static_cast<quint64>(number));
  bytes_.append(static_cast<char>(0x10 | std::countr_zero(static_cast<unsigned>(width))));
  integerBytes(static_cast<quint64>(number), width);
}

void PropertyListWriter::real(double number) {
  begin();
  bytes_.append('\x23');
  integerBytes(std::bit_cast<quint64>(number), 8);
}

void PropertyListWriter::boolean(bool truth) {
  begin();
  bytes_.append(truth ? '\x09' : '\x08');
}

void PropertyListWriter::uid(quint32 number) {
  begin();
  const int width = widthFor(number);
  bytes_.append(static_cast<char>(0x80 | (width - 1)));
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
  const auto table = static_cast<quint64>(bytes_.size());
  const int width = widthFor(table);
  for (const quint32 offset : offsets_) integerBytes(offset, width);
  bytes_.append(6, '\0');
  bytes_.append(static_cast<char>(width));
  bytes_.append(static_cast<char>(referenceWidth_));
  integerBytes(offsets_.size(), 8);
  integerBytes(0, 8);
  integerBytes(table, 8);
  offsets_.clear();
  return std::move(bytes_);
}

}  // namespace pendra
