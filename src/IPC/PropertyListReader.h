#pragma once

#include <QByteArrayView>
#include <QString>
#include <optional>

namespace pendra {

/// Looks at the objects of a binary property list in place. A list is taken only when its tables lie within
/// its bytes; every object is checked when it is looked at, and nothing is copied before it is asked for.
class PropertyListReader {
 public:
  enum class Kind { Text, Integer, Real, Boolean, Uid, Array, Dictionary, Other };

  /// An object: its kind, where its content begins and how much of it there is (characters, bytes or pairs).
  struct Object {
    Kind kind = Kind::Other;
    bool wide = false;  ///< a text in UTF-16; for a truth value, its value
    qsizetype content = 0;
    qsizetype count = 0;
  };

  /// None when the bytes are no property list.
  static std::optional<PropertyListReader> of(QByteArrayView bytes);

  [[nodiscard]] quint64 top() const { return top_; }
  [[nodiscard]] quint64 objectCount() const { return objectCount_; }

  /// None when the object does not exist or does not lie within the list.
  [[nodiscard]] std::optional<Object> object(quint64 index) const;
  /// The i-th reference of an array, or of a dictionary: its keys come first, then its values.
  [[nodiscard]] quint64 reference(const Object& object, qsizetype i) const;
  /// The references of a dictionary's keys as they stand; equal bytes mean the same keys in the same order.
  [[nodiscard]] QByteArrayView keyBytes(const Object& dictionary) const;

  /// The number of an object of kind `Uid`; none when it is out of all bounds.
  [[nodiscard]] std::optional<quint32> uid(const Object& object) const;
  /// The number of an object of kind `Integer`; none when 64 bits with a sign cannot hold it.
  [[nodiscard]] std::optional<qint64> integer(const Object& object) const;
  [[nodiscard]] double real(const Object& object) const;
  [[nodiscard]] QString text(const Object& object) const;
  [[nodiscard]] bool isText(const Object& object, QStringView text) const;

 private:
  quint64 number(qsizetype at, qsizetype width) const;
  bool readCount(Object& object, qsizetype& at) const;
  bool fits(const Object& object) const;

  QByteArrayView bytes_;
  qsizetype table_ = 0;
  int offsetWidth_ = 0;
  int referenceWidth_ = 0;
  quint64 objectCount_ = 0;
  quint64 top_ = 0;
};

}  // namespace pendra
