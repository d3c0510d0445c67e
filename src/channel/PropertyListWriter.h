#pragma once

#include <QByteArray>
#include <QStringView>
#include <vector>

namespace pendra {

/// Writes the objects of a binary property list in any order; each is announced by `begin` under its index.
/// Object 0 is the top one. How many objects there will be is told beforehand, because that decides how wide
/// a reference is.
class PropertyListWriter {
 public:
  PropertyListWriter(quint32 count, qsizetype expectedSize);

  /// Says which object comes next.
  PropertyListWriter& begin(quint32 index) {
    offsets_[index] = static_cast<quint32>(bytes_.size());
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

  /// The finished list. The writer is empty afterwards.
  QByteArray finish();

 private:
  void sized(unsigned kind, quint64 count);
  void byte(unsigned value) { bytes_.append(static_cast<char>(value)); }
  void integerBytes(quint64 number, int width);

  QByteArray bytes_;
  std::vector<quint32> offsets_;
  int referenceWidth_;
};

}  // namespace pendra
