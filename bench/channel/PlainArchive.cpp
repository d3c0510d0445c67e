#include "PlainArchive.h"

#include <QHash>
#include <QtEndian>
#include <optional>

namespace pendra::bench {
namespace {

class PlainWriter {
 public:
  QByteArray write(const ArchiveValue::Array& rows) {
    bytes_ = "bplist00";
    const quint32 top = begin();  // its place; what stands there comes last
    for (const char* key : {"name", "vtObjectID", "parentObjectID", "$class"}) keys_.push_back(text(key));
    nil_ = uid(object(text("$null")));
    std::vector<quint32> references;
    const quint32 list = static_cast<quint32>(objects_.size());
    object(0);
    const quint32 rowClass = uid(described("NameAndRecNumber"));
    for (const ArchiveValue& value : rows) references.push_back(uid(row(*value.as<ListRow>(), rowClass)));
    const quint32 arrayClass = described("NSArray");
    const quint32 inner = begin();
    head(0xaf, references);
    objects_[list] = dictionary({text("NS.objects"), keys_[3]}, {inner, uid(arrayClass)});
    const quint32 root = dictionary({text("root")}, {uid(list)});
    const quint32 version = begin();
    bytes_.append("\x12\x00\x01\x86\xa0", 5);
    const quint32 archiver = text("NSKeyedArchiver");
    const quint32 all = begin();
    head(0xaf, objects_);
    const std::vector<quint32> keys{text("$version"), text("$archiver"), text("$top"), text("$objects")};
    offsets_[top] = static_cast<quint32>(bytes_.size());
    head(0xdf, keys);
    for (const quint32 value : {version, archiver, root, all}) number(value);
    return finish();
  }

 private:
  quint32 begin() {
    offsets_.push_back(static_cast<quint32>(bytes_.size()));
    return static_cast<quint32>(offsets_.size() - 1);
  }
  void number(quint32 value) {
    char bytes[4];
    qToBigEndian(value, bytes);
    bytes_.append(bytes, 4);
  }
  void head(int marker, const std::vector<quint32>& references) {
    bytes_.append(static_cast<char>(marker)).append('\x12');
    number(static_cast<quint32>(references.size()));
    for (const quint32 reference : references) number(reference);
  }
  quint32 dictionary(const std::vector<quint32>& keys, std::initializer_list<quint32> values) {
    const quint32 index = begin();
    head(0xdf, keys);
    for (const quint32 value : values) number(value);
    return index;
  }
  quint32 text(const QString& text) {
    const quint32 index = begin();
    const bool isAscii =
        std::all_of(text.begin(), text.end(), [](QChar one) { return one.unicode() < 0x80; });
    bytes_.append(isAscii ? '\x5f' : '\x6f').append('\x12');
    number(static_cast<quint32>(text.size()));
    if (isAscii) {
      bytes_.append(text.toLatin1());
    } else {
      QByteArray wide(2 * text.size(), Qt::Uninitialized);
      qToBigEndian<quint16>(text.utf16(), text.size(), wide.data());
      bytes_.append(wide);
    }
    return index;
  }
  quint32 text(const char* ascii) { return text(QString::fromLatin1(ascii)); }
  /// Numbers an object of the archive.
  quint32 object(quint32 index) {
    objects_.push_back(index);
    return static_cast<quint32>(objects_.size() - 1);
  }
  quint32 uid(quint32 value) {
    const quint32 index = begin();
    bytes_.append('\x83');
    number(value);
    return index;
  }
  quint32 described(const char* name) {
    const quint32 named = text(name);
    const quint32 names = begin();
    head(0xaf, {named, text("NSObject")});
    return object(dictionary({text("$classname"), text("$classes")}, {named, names}));
  }
  quint32 field(const std::optional<QString>& field) {
    if (!field) return nil_;
    quint32& known = texts_[*field];
    if (known == 0) known = uid(object(text(*field)));
    return known;
  }
  quint32 row(const ListRow& row, quint32 rowClass) {
    const quint32 name = field(row.name);
    const quint32 id = field(row.id);
    const quint32 parent = field(row.parent);
    return object(dictionary(keys_, {name, id, parent, rowClass}));
  }
  QByteArray finish() {
    const auto table = static_cast<quint32>(bytes_.size());
    for (const quint32 offset : offsets_) number(offset);
    bytes_.append(6, '\0').append('\x04').append('\x04');
    for (const quint32 value : {static_cast<quint32>(offsets_.size()), 0U, table}) {
      number(0);
      number(value);
    }
    return std::move(bytes_);
  }

  QByteArray bytes_;
  std::vector<quint32> offsets_;
  std::vector<quint32> objects_;  ///< indices by number
  std::vector<quint32> keys_;
  quint32 nil_ = 0;                ///< the reference object of nil
  QHash<QString, quint32> texts_;  ///< the reference objects
};

class PlainReader {
 public:
  explicit PlainReader(const QByteArray& archive) : bytes_(archive) {
    const qsizetype trailer = archive.size() - 32;
    offsetWidth_ = archive[trailer + 6];
    width_ = archive[trailer + 7];
    table_ = static_cast<qsizetype>(number(trailer + 24, 8));
  }

  std::vector<ListRow> read() {
    const qsizetype top = at(0);
    objects_ = parts(value(top, "$objects"));
    const qsizetype list = object(value(value(top, "$top"), "root"));
    std::vector<ListRow> rows;
    for (const qsizetype reference : parts(value(list, "NS.objects"))) {
      const qsizetype row = object(reference);
      rows.push_back({field(row, "name"), field(row, "vtObjectID"), field(row, "parentObjectID")});
    }
    return rows;
  }

 private:
  quint64 number(qsizetype at, int width) const {
    return qFromBigEndian<quint64>(bytes_.data() + at) >> (64 - 8 * width);
  }
  qsizetype at(quint64 index) const {
    return static_cast<qsizetype>(
        number(table_ + static_cast<qsizetype>(index) * offsetWidth_, offsetWidth_));
  }
  int marker(qsizetype at) const { return static_cast<unsigned char>(bytes_[at]); }
  /// How much an object has; moves on to its content.
  qsizetype count(qsizetype& at) const {
    const int low = marker(at++) & 15;
    if (low < 15) return low;
    const int width = 1 << (marker(at) & 15);
    const auto count = static_cast<qsizetype>(number(at + 1, width));
    at += 1 + width;
    return count;
  }
  QString text(qsizetype at) const {
    const bool wide = marker(at) >> 4 == 6;
    const qsizetype size = count(at);
    if (!wide) return QString::fromLatin1(bytes_.data() + at, size);
    QString text(size, Qt::Uninitialized);
    qFromBigEndian<quint16>(bytes_.data() + at, size, text.data());
    return text;
  }
  qsizetype reference(qsizetype at, qsizetype i) const { return this->at(number(at + i * width_, width_)); }
  std::vector<qsizetype> parts(qsizetype at) const {
    const qsizetype size = count(at);
    std::vector<qsizetype> parts;
    for (qsizetype i = 0; i < size; ++i) parts.push_back(reference(at, i));
    return parts;
  }
  /// Where the object that a reference object means begins.
  qsizetype object(qsizetype uid) const {
    return objects_[static_cast<std::size_t>(number(uid + 1, (marker(uid) & 15) + 1))];
  }
  qsizetype value(qsizetype dictionary, const char* key) const {
    const qsizetype size = count(dictionary);
    for (qsizetype i = 0; i < size; ++i) {
      qsizetype at = reference(dictionary, i);
      const qsizetype length = count(at);
      if (bytes_.sliced(at, length) == key) return reference(dictionary, size + i);
    }
    return 0;
  }
  std::optional<QString> field(qsizetype row, const char* key) const {
    const qsizetype uid = value(row, key);
    if (number(uid + 1, (marker(uid) & 15) + 1) == 0) return {};
    return text(object(uid));
  }

  QByteArrayView bytes_;
  int offsetWidth_;
  int width_;
  qsizetype table_;
  std::vector<qsizetype> objects_;
};

}  // namespace

QByteArray plainlyWritten(const ArchiveValue::Array& rows) { return PlainWriter().write(rows); }

std::vector<ListRow> plainlyRead(const QByteArray& archive) { return PlainReader(archive).read(); }

}  // namespace pendra::bench
