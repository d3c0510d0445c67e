#pragma once

#include <QStringView>
#include <array>
#include <span>

namespace pendra {

/// The classes whose objects travel, by their index in `kArchiveClasses`.
enum ArchiveClassIndex : quint32 { kArrayClass, kNilMarkerClass, kListRowClass, kArchiveClassCount };

/// A class as it stands in an archive: its name, and the keys of its objects' fields in their order.
struct ArchiveClass {
  QStringView name;
  std::span<const QStringView> keys;
};

namespace archive_keys {
inline constexpr std::array<QStringView, 1> kArray{u"NS.objects"};
inline constexpr std::array<QStringView, 3> kListRow{u"name", u"vtObjectID", u"parentObjectID"};
}  // namespace archive_keys

inline constexpr std::array<ArchiveClass, kArchiveClassCount> kArchiveClasses{
    ArchiveClass{.name = u"NSArray", .keys = archive_keys::kArray},
    ArchiveClass{.name = u"IPCNilArg", .keys = {}},
    ArchiveClass{.name = u"NameAndRecNumber", .keys = archive_keys::kListRow}};

}  // namespace pendra
