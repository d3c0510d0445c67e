#include "store/Predicate.h"

#include "store/ManagedObject.h"

namespace pendra {

namespace {

Error unreadable(QStringView rest) {
  return {QStringLiteral("predicate"), 0, QStringLiteral("cannot be read from “") + rest + u"” on"};
}

/// The value at the end of a key path as text; none where the path breaks or holds none. Not a copy: a
/// predicate is asked for each of many objects, and counting who shares a text takes longer than to compare
/// it.
const QString* textAt(ManagedObject& object, const PropertyDescriptor& property) {
  if (property.kind != Kind::Text) return nullptr;
  const std::optional<QString>& held = property.access.text(object).get();
  return held ? &*held : nullptr;
}

std::optional<bool> booleanAt(ManagedObject& object, const PropertyDescriptor& property) {
  return property.kind == Kind::Boolean ? property.access.boolean(object).get() : std::nullopt;
}

/// Follows all but the last key from object to object; none where a link is missing.
ManagedObject* follow(ManagedObject* object, QStringList::const_iterator key,
                      QStringList::const_iterator last) {
  for (; object && key != last; ++key) {
    const PropertyDescriptor* link = object->entity().property(*key);
    object = link && link->kind == Kind::ToOne ? link->access.toOne(*object).target() : nullptr;
  }
  return object;
}

}  // namespace

/// Reads a predicate from left to right; each step answers whether it found what it wanted.
class Predicate::Reader {
 public:
  explicit Reader(QStringView text) : rest_(text) {}

  std::optional<Clause> clause() {
    Clause clause;
    if (!keyPath(clause) || !comparison(clause) || !value(clause)) return std::nullopt;
    return clause;
  }
  bool sign(QStringView sign) {
    skipBlanks();
    if (!rest_.startsWith(sign)) return false;
    rest_ = rest_.mid(sign.size());
    return true;
  }
  bool atEnd() {
    skipBlanks();
    return rest_.isEmpty();
  }
  [[nodiscard]] QStringView rest() const { return rest_; }

 private:
  void skipBlanks() {
    while (!rest_.isEmpty() && rest_.front() == u' ') rest_ = rest_.mid(1);
  }
  QStringView word() {
    skipBlanks();
    qsizetype length = 0;
    while (length < rest_.size() && (rest_[length].isLetterOrNumber() || rest_[length] == u'.')) ++length;
    const QStringView word = rest_.left(length);
    rest_ = rest_.mid(length);
    return word;
  }
  bool keyPath(Clause& clause) {
    clause.keyPath = word().toString().split(u'.');
    return !clause.keyPath.contains(QString());
  }
  bool comparison(Clause& clause) {
    if (sign(u"==")) {
      clause.comparison = Comparison::Equal;
    } else if (sign(u"!=")) {
      clause.comparison = Comparison::Different;
    } else {
      clause.comparison = Comparison::Like;
      return word() == u"LIKE";
    }
    return true;
  }
  bool value(Clause& clause) {
    if (!sign(u"\"")) {
      const QStringView name = word();
      clause.value = name == u"YES";
      return (name == u"YES" || name == u"NO") && clause.comparison != Comparison::Like;
    }
    const qsizetype end = rest_.indexOf(u'"');
    if (end < 0) return false;
    clause.value = rest_.left(end).toString();
    rest_ = rest_.mid(end + 1);
    return true;
  }

  QStringView rest_;
};

Result<Predicate> Predicate::parse(QStringView text) {
  Predicate predicate;
  Reader reader(text);
  do {
    auto clause = reader.clause();
    if (!clause) return unreadable(reader.rest());
    predicate.clauses_.push_back(std::move(*clause));
  } while (reader.sign(u"&&"));
  if (!reader.atEnd()) return unreadable(reader.rest());
  return predicate;
}

bool Predicate::matches(ManagedObject& object) const {
  return std::all_of(clauses_.begin(), clauses_.end(),
                     [&](const Clause& clause) { return holds(clause, object); });
}

bool Predicate::holds(const Clause& clause, ManagedObject& object) {
  const auto last = clause.keyPath.end() - 1;
  ManagedObject* owner = follow(&object, clause.keyPath.begin(), last);
  const PropertyDescriptor* property = owner ? owner->entity().property(*last) : nullptr;
  if (const bool* wanted = std::get_if<bool>(&clause.value)) {
    const auto held = property ? booleanAt(*owner, *property) : std::nullopt;
    return (held == *wanted) == (clause.comparison == Comparison::Equal);
  }
  const QString& wanted = std::get<QString>(clause.value);
  const QString* held = property ? textAt(*owner, *property) : nullptr;
  if (clause.comparison == Comparison::Like) return held && matchesLike(*held, wanted);
  return (held && *held == wanted) == (clause.comparison == Comparison::Equal);
}

bool matchesLike(QStringView text, QStringView pattern) {
  // On a mismatch go back to the last star and let it take one code unit more.
  qsizetype t = 0;
  qsizetype p = 0;
  qsizetype star = -1;
  qsizetype taken = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == u'*') {
      star = p++;
      taken = t;
    } else if (p < pattern.size() && (pattern[p] == u'?' || pattern[p] == text[t])) {
      ++p;
      ++t;
    } else if (star >= 0) {
      p = star + 1;
      t = ++taken;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == u'*') ++p;
  return p == pattern.size();
}

}  // namespace pendra
