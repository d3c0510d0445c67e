#pragma once
// An entity is an ordinary class plus one table that says how its members are stored. Everything that
// treats objects alike (reading and writing rows, keeping both ends of a relationship in step, delete
// rules, key paths) goes through that table; nothing in the store knows an entity by name.

#include <QAnyStringView>
#include <QString>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "store/Relationships.h"
#include "store/Slots.h"

namespace pendra {

class ManagedObject;
struct EntityDescriptor;

/// How the owner of an object does away with it: at once, or with the last Ref to it.
struct LetGo {
  void operator()(ManagedObject* object) const;
};
using OwnedObject = std::unique_ptr<ManagedObject, LetGo>;

/// What a property holds, and with it how its column is read and written.
enum class Kind { Text, Boolean, Instant, Number, ToOne, ToMany };

/// What happens to the targets of a relationship when its owner is deleted.
enum class DeleteRule { Nullify, Cascade };

/// Gives the member of one object. Only the function of a property's own kind is set.
struct MemberAccess {
  Slot<QString>& (*text)(ManagedObject&) = nullptr;
  Slot<bool>& (*boolean)(ManagedObject&) = nullptr;
  Slot<pendra::Instant>& (*instant)(ManagedObject&) = nullptr;
  Slot<double>& (*number)(ManagedObject&) = nullptr;
  ToOneBase& (*toOne)(ManagedObject&) = nullptr;
  ToManyBase& (*toMany)(ManagedObject&) = nullptr;
};

/// One member of an entity. `name` is its column (a to-many relationship has none) and its key.
struct PropertyDescriptor {
  const char* name;
  Kind kind;
  MemberAccess access;
  bool indexed = false;  ///< texts and booleans only: look-ups are answered from an index
  const EntityDescriptor& (*target)() = nullptr;  ///< relationships only
  const char* inverse = nullptr;                  ///< relationships only: the property at the other end
  DeleteRule deleteRule = DeleteRule::Nullify;    ///< relationships only

  [[nodiscard]] constexpr bool hasColumn() const { return kind != Kind::ToMany; }
};

/// One entity: its table's name, its members, and how an object of it comes to be.
struct EntityDescriptor {
  const char* name;
  std::span<const PropertyDescriptor> properties;
  OwnedObject (*make)();

  /// The property of that name; none when the entity has no such property.
  [[nodiscard]] const PropertyDescriptor* property(QAnyStringView key) const;
};

/// The layout of the first documents.
inline constexpr int kFirstLayout = 1;

/// A column that documents of an older layout may lack.
struct AddedColumn {
  const char* table;
  const char* name;
  const char* type;  ///< of the database; where it is added it is absent in every row
};

/// The entities of a document and the texts that make their tables.
struct ObjectModel {
  std::vector<const EntityDescriptor*> entities;
  QByteArray schema;  ///< creates the tables of a new document, in the newest layout
  std::vector<std::vector<AddedColumn>> upgrades;  ///< the n-th is what layout n + 1 added, n from 1

  [[nodiscard]] int newestLayout() const { return kFirstLayout + static_cast<int>(upgrades.size()); }
};

namespace describe {

template <class Class, class Member>
constexpr Class* ownerOf(Member Class::*);  // declared for its type only

template <auto member, class Result>
Result& memberOf(ManagedObject& object) {
  using Class = std::remove_pointer_t<decltype(ownerOf(member))>;
  return static_cast<Class&>(object).*member;
}

template <class Class>
OwnedObject make() {
  return OwnedObject(new Class);
}

template <auto member>
constexpr PropertyDescriptor text(const char* name) {
  return {.name = name, .kind = Kind::Text, .access = {.text = memberOf<member, Slot<QString>>}};
}
constexpr PropertyDescriptor indexed(PropertyDescriptor property) {
  property.indexed = true;
  return property;
}
template <auto member>
constexpr PropertyDescriptor boolean(const char* name) {
  return {.name = name, .kind = Kind::Boolean, .access = {.boolean = memberOf<member, Slot<bool>>}};
}
template <auto member>
constexpr PropertyDescriptor instant(const char* name) {
  return {
      .name = name, .kind = Kind::Instant, .access = {.instant = memberOf<member, Slot<pendra::Instant>>}};
}
template <auto member>
constexpr PropertyDescriptor number(const char* name) {
  return {.name = name, .kind = Kind::Number, .access = {.number = memberOf<member, Slot<double>>}};
}
template <auto member, class Target>
constexpr PropertyDescriptor toOne(const char* name, const char* inverse) {
  return {.name = name,
          .kind = Kind::ToOne,
          .access = {.toOne = memberOf<member, ToOneBase>},
          .target = &Target::descriptor,
          .inverse = inverse};
}
template <auto member, class Target>
constexpr PropertyDescriptor toMany(const char* name, const char* inverse,
                                    DeleteRule rule = DeleteRule::Nullify) {
  return {.name = name,
          .kind = Kind::ToMany,
          .access = {.toMany = memberOf<member, ToManyBase>},
          .target = &Target::descriptor,
          .inverse = inverse,
          .deleteRule = rule};
}

}  // namespace describe

}  // namespace pendra
