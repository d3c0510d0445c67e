#pragma once

#include <QByteArrayView>
#include <QString>
#include <QtEndian>
#include <optional>

namespace pendra {

/// Looks at the objects of a binary property list in place. A list is taken only when its tables lie within
/// its bytes; every object is checked when it is looked at, and nothing is copied before it is asked for.
class PropertyListReader {
 public:
  enum class Kind { None, Text, Integer, Real, Boolean, Uid, Array, Dictionary, Other };

  /// An object: its kind, where its content begins and how much of it there is (characters, bytes or pairs).
  /// Of kind `None` when it does not exist or does not lie within the list.
  struct Object {
    explicit operator bool() const { return kind != Kind::None; }

    Kind kind = Kind::None;
    bool wide = false;  ///< a text in UTF-16; for a truth value, its value
    qsizetype content = 0;
    qsizetype count = 0;
  };

  /// None when the bytes are no property list.
  static std::optional<PropertyListReader> of(QByteArrayView bytes);

  [[nodiscard]] quint64 top() const { return top_; }
  [[nodiscard]] quint64 objectCount() const { return objectCount_; }

  // No optional values here and below: to put one together and take it apart is most of what a look costs.
  [[nodiscard]] Object object(quint64 index) const;
  /// The i-th reference of an array, or of a dictionary: its keys come first, then its values.
  [[nodiscard]] quint64 reference(const Object& object, qsizetype i) const {
    return number(object.content + i * referenceWidth_, referenceWidth_);
  }
  /// The number of the object at an index if that is of kind `Uid`; `kNoUid` when it is not, or is out of all
  /// bounds.
  [[nodiscard]] quint64 uidAt(quint64 index) const;
  static constexpr quint64 kNoUid = ~quint64{0};
  /// The references of a dictionary's keys as they stand; equal bytes mean the same keys in the same order.
  [[nodiscard]] QByteArrayView keyBytes(const Object& dictionary) const;

  /// The number of an object of kind `Integer`; none when 64 bits with a sign cannot hold it.
  [[nodiscard]] std::optional<qint64> integer(const Object& object) const;
  [[nodiscard]] double real(const Object& object) const;
  [[nodiscard]] QString text(const Object& object) const;
  [[nodiscard]] bool isText(const Object& object, QStringView text) const;

 private:
  /// A number of up to eight bytes. Every number is followed by the trailer at least, so eight can be read.
  quint64 number(qsizetype at, qsizetype width) const {
    return qFromBigEndian<quint64>(bytes_.data() + at) >> (64 - 8 * width);
  }
  bool readSize(Object& object, unsigned marker) const;
  bool readCount(Object& object) const;
  bool fits(const Object& object) const;

  static constexpr qsizetype kHeader = 8;

  QByteArrayView bytes_;
  qsizetype table_ = 0;
  qsizetype offsetWidth_ = 0;
  qsizetype referenceWidth_ = 0;
  quint64 objectCount_ = 0;
  quint64 top_ = 0;
};

inline quint64 PropertyListReader::uidAt(quint64 index) const {
  if (index >= objectCount_) return kNoUid;
  const quint64 offset = number(table_ + static_cast<qsizetype>(index) * offsetWidth_, offsetWidth_);
  if (offset < kHeader || offset >= static_cast<quint64>(table_)) return kNoUid;
  const auto at = static_cast<qsizetype>(offset) + 1;
  const unsigned marker = static_cast<unsigned char>(bytes_[at - 1]);
  const qsizetype width = (marker & 15) + 1;
  if (marker >> 4 != 8 || width > 8 || width > table_ - at) return kNoUid;
  return number(at, width);
}

}  // namespace pendra
