#pragma once

#include <QByteArray>
#include <QStringView>
#include <span>
#include <vector>

namespace pendra {

/// Appends the objects of a binary property list one by one; the n-th object begun has index n. Object 0 is
/// the top one. The number of objects is told beforehand, because it decides how wide a reference is.
class PropertyListWriter {
 public:
  PropertyListWriter(quint32 objectCount, qsizetype expectedSize);

  /// How wide a reference is among so many objects.
  static int referenceWidth(quint32 objectCount);

  void text(QStringView text);
  void integer(qint64 number);
  void real(double number);
  void boolean(bool truth);
  void uid(quint32 number);
  void arrayHead(quint32 count);
  void dictionaryHead(quint32 count);
  /// One of the references that follow a head: those of the keys first, in a dictionary.
  void reference(quint32 object);

  /// The finished list. The writer is empty afterwards.
  QByteArray finish();

 private:
  void begin();
  void sized(unsigned kind, quint64 count);
  void byte(unsigned value) { *room(1) = static_cast<char>(value); }
  void integerBytes(quint64 number, int width);
  /// Where the next bytes go, as many as are asked for.
  char* room(qsizetype size);

  QByteArray bytes_;
  qsizetype used_ = 0;
  std::vector<quint32> offsets_;
  quint32 objectCount_;
  int referenceWidth_;
};

}  // namespace pendra
