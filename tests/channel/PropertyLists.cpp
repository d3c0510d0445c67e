#include "PropertyLists.h"

#include <optional>

namespace pendra {
namespace {

/// Lays objects out one behind the other, references of four bytes and all.
class Layout {
 public:
  quint32 add(const QByteArray& object) {
    const auto index = static_cast<quint32>(objects_.size());
    objects_.emplace_back();
    objects_[index] = object.startsWith('D') || object.startsWith('A') ? spread(object) : object;
    return index;
  }

  QByteArray bytes() const {
    QByteArray list("bplist00");
    std::vector<quint32> offsets;
    for (const QByteArray& object : objects_) {
      offsets.push_back(static_cast<quint32>(list.size()));
      list += object;
    }
    const auto table = static_cast<quint32>(list.size());
    for (const quint32 offset : offsets) list += number(offset);
    list += QByteArray(6, '\0') + '\x04' + '\x04';
    for (const quint32 value : {static_cast<quint32>(offsets.size()), 0U, table})
      list += QByteArray(4, '\0') + number(value);
    return list;
  }

 private:
  static QByteArray number(quint32 value) {
    QByteArray bytes;
    for (const int shift : {24, 16, 8, 0}) bytes.append(static_cast<char>(value >> shift & 0xff));
    return bytes;
  }

  QByteArray spread(const QByteArray& object) {
    qsizetype at = 1;
    const auto next = [&] {
      const qsizetype end = object.indexOf(' ', at);
      const int value = object.mid(at, end - at).toInt();
      at = end + 1;
      return value;
    };
    const bool isArray = object.startsWith('A');
    const int count = next();
    QByteArray references;
    for (int i = 0; i < count; ++i) {
      const int size = next();
      references += number(add(object.mid(at, size)));
      at += size;
    }
    return QByteArray(isArray ? "\xaf\x12" : "\xdf\x12", 2) +
           number(static_cast<quint32>(isArray ? count : count / 2)) + references;
  }

  std::vector<QByteArray> objects_;
};

}  // namespace

QByteArray handMade(const std::vector<QByteArray>& objects) {
  std::vector<QByteArray> all{text("$null")};
  all.insert(all.end(), objects.begin(), objects.end());
  Layout layout;
  layout.add(packed('D', {text("$version"), text("$archiver"), text("$top"), text("$objects"),
                          QByteArray("\x12\x00\x01\x86\xa0", 5), text("NSKeyedArchiver"),
                          packed('D', {text("root"), uid(1)}), packed('A', all)}));
  return layout.bytes();
}

}  // namespace pendra
