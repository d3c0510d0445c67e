#pragma once
// Keyed archives put together by hand, to be damaged as no archiver would: every object is given as its
// bytes, and whatever it refers to is written behind it on the fly.

#include <QByteArray>
#include <utility>
#include <vector>

namespace pendra {

/// A value within an archive's object that is not one of the archive's own objects.
using Inline = std::pair<const char*, QByteArray>;

inline QByteArray text(const QByteArray& ascii) {
  const auto size = static_cast<quint32>(ascii.size());
  QByteArray bytes("\x5f\x12", 2);
  for (const int shift : {24, 16, 8, 0}) bytes.append(static_cast<char>(size >> shift & 0xff));
  return bytes + ascii;
}

inline QByteArray uid(int number) { return QByteArray("\x80") + static_cast<char>(number); }

// An object with parts stands as "D" or "A", a count, and its parts with their lengths, until it is laid out.
inline QByteArray packed(char kind, const std::vector<QByteArray>& parts) {
  QByteArray bytes(1, kind);
  bytes += QByteArray::number(static_cast<qlonglong>(parts.size())) + ' ';
  for (const QByteArray& part : parts) bytes += QByteArray::number(part.size()) + ' ' + part;
  return bytes;
}

inline QByteArray object(int classNumber, const std::vector<Inline>& pairs) {
  std::vector<QByteArray> parts{text("$class")};
  for (const Inline& pair : pairs) parts.push_back(text(pair.first));
  parts.push_back(uid(classNumber));
  for (const Inline& pair : pairs) parts.push_back(pair.second);
  return packed('D', parts);
}

inline QByteArray array(int classNumber, const std::vector<int>& numbers) {
  std::vector<QByteArray> parts;
  for (const int number : numbers) parts.push_back(uid(number));
  return object(classNumber, {{"NS.objects", packed('A', parts)}});
}

inline QByteArray classNamed(const char* name) {
  return packed(
      'D', {text("$classname"), text("$classes"), text(name), packed('A', {text(name), text("NSObject")})});
}

/// The archive of these objects; number 1 is its root.
QByteArray handMade(const std::vector<QByteArray>& objects);

}  // namespace pendra
