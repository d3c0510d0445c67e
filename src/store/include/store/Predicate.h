#pragma once
// Only the conditions into which a user's name is written are texts, because there the name's own quotes,
// stars and question marks act. Every fixed condition is a plain function.

#include <QString>
#include <QStringList>
#include <variant>
#include <vector>

#include "platform/Result.h"

namespace pendra {

class ManagedObject;

/// A condition read from a text: clauses `keypath LIKE "pattern"`, `keypath == value`, `keypath != value`
/// joined by `&&`; a value is a quoted text, YES or NO. Nothing is escaped: a quote ends the text, a
/// backslash stands for itself. In a LIKE pattern `*` matches any run and `?` any one code unit.
class Predicate {
 public:
  /// Reads a text once. Fails on whatever is not wholly of that form.
  static Result<Predicate> parse(QStringView text);

  [[nodiscard]] bool matches(ManagedObject& object) const;

 private:
  enum class Comparison { Like, Equal, Different };
  struct Clause {
    QStringList keyPath;
    Comparison comparison;
    std::variant<QString, bool> value;
  };
  class Reader;

  static bool holds(const Clause& clause, ManagedObject& object);

  std::vector<Clause> clauses_;
};

/// Whether `text` as a whole matches a LIKE pattern, by code unit.
[[nodiscard]] bool matchesLike(QStringView text, QStringView pattern);

}  // namespace pendra
