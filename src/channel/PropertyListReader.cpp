#include "PropertyListReader.h"

#include <bit>

namespace pendra {
namespace {

constexpr qsizetype kTrailer = 32;

PropertyListReader::Kind kindOf(unsigned marker) {
  using Kind = PropertyListReader::Kind;
  switch (marker >> 4) {
    case 0x0:
      return marker == 8 || marker == 9 ? Kind::Boolean : Kind::Other;
    case 0x1:
      return Kind::Integer;
    case 0x2:
      return Kind::Real;
    case 0x5:
    case 0x6:
      return Kind::Text;
    case 0x8:
      return Kind::Uid;
    case 0xa:
      return Kind::Array;
    case 0xd:
      return Kind::Dictionary;
    default:
      return Kind::Other;
  }
}

}  // namespace

std::optional<PropertyListReader> PropertyListReader::of(QByteArrayView bytes) {
  if (bytes.size() < kHeader + kTrailer || !bytes.startsWith("bplist00")) return {};
  PropertyListReader list;
  list.bytes_ = bytes;
  const qsizetype trailer = bytes.size() - kTrailer;
  const auto byteAt = [&](qsizetype at) { return static_cast<unsigned char>(bytes[at]); };
  list.offsetWidth_ = byteAt(trailer + 6);
  list.referenceWidth_ = byteAt(trailer + 7);
  if (list.offsetWidth_ < 1 || list.offsetWidth_ > 8 || list.referenceWidth_ < 1 || list.referenceWidth_ > 8)
    return {};
  list.objectCount_ = list.number(trailer + 8, 8);
  list.top_ = list.number(trailer + 16, 8);
  const quint64 table = list.number(trailer + 24, 8);
  if (table < kHeader || table > static_cast<quint64>(trailer)) return {};
  const quint64 room = (static_cast<quint64>(trailer) - table) / static_cast<quint64>(list.offsetWidth_);
  if (list.objectCount_ > room || list.top_ >= list.objectCount_) return {};
  list.table_ = static_cast<qsizetype>(table);
  return list;
}

PropertyListReader::Object PropertyListReader::object(quint64 index) const {
  Object object;
  if (index >= objectCount_) return object;
  const quint64 offset = number(table_ + static_cast<qsizetype>(index) * offsetWidth_, offsetWidth_);
  if (offset < kHeader || offset >= static_cast<quint64>(table_)) return object;
  object.content = static_cast<qsizetype>(offset) + 1;
  const unsigned marker = static_cast<unsigned char>(bytes_[object.content - 1]);
  object.kind = kindOf(marker);
  if (!readSize(object, marker) || !fits(object)) object.kind = Kind::None;
  return object;
}

/// Reads how much content there is, which the lower half of the marker tells in a way of each kind.
bool PropertyListReader::readSize(Object& object, unsigned marker) const {
  object.count = marker & 15;
  switch (object.kind) {
    case Kind::Other:
      object.count = 0;
      return true;
    case Kind::Boolean:
      object.wide = marker == 9;
      object.count = 0;
      return true;
    case Kind::Integer:
    case Kind::Real:
      if (object.count > 4 || (object.kind == Kind::Real && (object.count < 2 || object.count > 3)))
        return false;
      object.count = qsizetype{1} << object.count;
      return true;
    case Kind::Uid:
      object.count += 1;
      return true;
    default:
      object.wide = marker >> 4 == 6;
      return object.count < 15 || readCount(object);
  }
}

/// Reads a count of 15 and more, which is a whole number of its own behind the marker.
bool PropertyListReader::readCount(Object& object) const {
  qsizetype at = object.content;
  if (at >= table_) return false;
  const unsigned marker = static_cast<unsigned char>(bytes_[at++]);
  if (marker >> 4 != 1 || (marker & 15) > 3) return false;
  const qsizetype width = qsizetype{1} << (marker & 15);
  if (width > table_ - at) return false;
  const quint64 count = number(at, width);
  if (count > static_cast<quint64>(table_)) return false;
  object.count = static_cast<qsizetype>(count);
  object.content = at + width;
  return true;
}

bool PropertyListReader::fits(const Object& object) const {
  qsizetype unit = 1;
  if (object.kind == Kind::Text && object.wide) unit = 2;
  if (object.kind == Kind::Array) unit = referenceWidth_;
  if (object.kind == Kind::Dictionary) unit = 2 * referenceWidth_;
  // Neither can overflow: a count is no greater than the list, and a unit no greater than 16.
  return object.count * unit <= table_ - object.content;
}

QByteArrayView PropertyListReader::keyBytes(const Object& dictionary) const {
  return bytes_.sliced(dictionary.content, dictionary.count * referenceWidth_);
}

std::optional<qint64> PropertyListReader::integer(const Object& object) const {
  // One, two and four bytes are without a sign, eight have one; of sixteen the upper half only repeats it.
  const auto low = static_cast<qint64>(number(object.content + std::max<qsizetype>(object.count - 8, 0),
                                              std::min<qsizetype>(object.count, 8)));
  if (object.count == 16 && static_cast<qint64>(number(object.content, 8)) != (low < 0 ? -1 : 0)) return {};
  return low;
}

double PropertyListReader::real(const Object& object) const {
  const quint64 bits = number(object.content, std::min<qsizetype>(object.count, 8));
  return object.count == 4 ? static_cast<double>(std::bit_cast<float>(static_cast<quint32>(bits)))
                           : std::bit_cast<double>(bits);
}

QString PropertyListReader::text(const Object& object) const {
  const char* content = bytes_.data() + object.content;
  if (!object.wide) return QString::fromLatin1(content, object.count);
  QString text(object.count, Qt::Uninitialized);
  qFromBigEndian<quint16>(content, object.count, text.data());
  return text;
}

bool PropertyListReader::isText(const Object& object, QStringView text) const {
  if (object.kind != Kind::Text || object.count != text.size()) return false;
  if (object.wide) return this->text(object) == text;
  return QLatin1StringView(bytes_.data() + object.content, object.count) == text;
}

}  // namespace pendra
