#pragma once

#include <QByteArray>
#include <QStringView>
#include <QtEndian>
#include <memory>

namespace pendra {

/// Writes the objects of a binary property list in any order; each is announced by `begin` under its index.
/// Object 0 is the top one. How many objects there can be is told beforehand, because that decides how wide a
/// reference is.
class PropertyListWriter {
 public:
  PropertyListWriter(quint32 greatestCount, qsizetype expectedSize);

  /// How wide a reference is among so many objects.
  static int referenceWidth(quint32 count);

  /// Says which object comes next.
  PropertyListWriter& begin(quint32 index) {
    offsets_[index] = static_cast<quint32>(at_ - bytes_.constData());
    return *this;
  }
  void text(QStringView text);
  void integer(qint64 number);
  void real(double number);
  void boolean(bool truth) { byte(truth ? 9 : 8); }
  void uid(quint32 number);
  void arrayHead(quint32 count) { sized(10, count); }
  void dictionaryHead(quint32 count) { sized(13, count); }
  /// One of the references that follow a head: those of the keys first, in a dictionary.
  void reference(quint32 object) { integerBytes(object, referenceWidth_); }

  /// The finished list of `count` objects. The writer is empty afterwards.
  QByteArray finish(quint32 count);

 private:
  void sized(unsigned kind, quint64 count);
  void byte(unsigned value) {
    *room(1) = static_cast<char>(value);
    ++at_;
  }
  void integerBytes(quint64 number, int width) {
    // Written as eight bytes, of which the next ones take back what is too much.
    qToBigEndian(number << (64 - 8 * width), room(8));
    at_ += width;
  }
  /// Where the next bytes go, with space for as many as are asked for.
  char* room(qsizetype size) {
    if (end_ - at_ < size) grow(size);
    return at_;
  }
  void grow(qsizetype size);

  QByteArray bytes_;
  char* at_;
  char* end_;
  std::unique_ptr<quint32[]> offsets_;
  int referenceWidth_;
};

}  // namespace pendra
