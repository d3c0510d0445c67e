#include "ArchiveNumbering.h"

#include <bit>

#include "channel/Archive.h"

namespace pendra {

ArchiveNumbering::ArchiveNumbering(const ArchiveValue& value) {
  objects_.emplace_back(QStringView(u"$null"));
  root_ = add(value, 0);
}

quint32 ArchiveNumbering::add(const ArchiveValue& value, int depth) {
  return value.visit([&](const auto& kind) { return addKind(kind, depth); });
}

quint32 ArchiveNumbering::next(Object object) {
  objects_.push_back(object);
  return static_cast<quint32>(objects_.size() - 1);
}

quint32 ArchiveNumbering::addNumber(Object number, quint64 bits) {
  quint32& known = numbers_[{number.index(), bits}];
  if (known == 0) known = next(number);
  return known;
}

quint32 ArchiveNumbering::addKind(double number, int) {
  return addNumber(number, std::bit_cast<quint64>(number));
}

quint32 ArchiveNumbering::addKind(const QString& text, int) {
  quint32& known = texts_[text];
  if (known != 0) return known;
  textLength_ += text.size();
  return known = next(QStringView(text));
}

quint32 ArchiveNumbering::addInstance(ArchiveClassIndex index, quint32 partCount) {
  const auto firstPart = static_cast<quint32>(parts_.size());
  parts_.resize(parts_.size() + partCount);
  return next(Instance{index, firstPart, partCount});
}

void ArchiveNumbering::need(ArchiveClassIndex index) {
  if (classNumbers_[index] == 0) classNumbers_[index] = next(index);
}

quint32 ArchiveNumbering::addKind(NilMarker, int) {
  const quint32 number = addInstance(kNilMarkerClass, 0);
  need(kNilMarkerClass);
  return number;
}

quint32 ArchiveNumbering::addKind(const ArchiveValue::Array& array, int depth) {
  tooDeep_ |= depth >= kArchiveDepth;
  if (tooDeep_) return 0;
  auto part = static_cast<quint32>(parts_.size());
  const quint32 number = addInstance(kArrayClass, static_cast<quint32>(array.size()));
  for (const ArchiveValue& element : array) {
    const quint32 added = add(element, depth + 1);
    parts_[part++] = added;
  }
  need(kArrayClass);
  return number;
}

quint32 ArchiveNumbering::addField(const std::optional<QString>& field) {
  return field ? addKind(*field, 0) : 0;
}

quint32 ArchiveNumbering::addKind(const ListRow& row, int depth) {
  tooDeep_ |= depth >= kArchiveDepth;
  if (tooDeep_) return 0;
  auto part = static_cast<quint32>(parts_.size());
  const quint32 number = addInstance(kListRowClass, kArchiveClasses[kListRowClass].keys.size());
  for (const auto* field : {&row.name, &row.id, &row.parent}) parts_[part++] = addField(*field);
  need(kListRowClass);
  return number;
}

}  // namespace pendra
