#pragma once
// What people type is a part of a name, in whatever case. An index is made once from a document and asked at
// every key; it holds until a name or an activity comes, goes or changes.

#include <QHash>
#include <QStringList>
#include <vector>

#include "model/Activity.h"
#include "store/ObjectContext.h"

namespace pendra {

/// Where a word of the text begins with these letters, whatever their case; -1 where none does. Both are
/// folded.
[[nodiscard]] qsizetype wordThatBegins(const QString& folded, const QString& letters);

/// The names of one kind, each once.
class NameList {
 public:
  /// `offered` are those that are in use, or are to be chosen from; they go before the others.
  void add(const QString& name, bool offered);
  /// After the last `add`.
  void sort();

  /// Whether one is called so, in whatever case.
  [[nodiscard]] bool holds(const QString& text) const;
  /// Whether one begins so, in whatever case.
  [[nodiscard]] bool holdsBeginning(const QString& text) const;
  /// The one that is called so; without it those that begin so, or else in which a word begins so. Several
  /// are as good as each other.
  [[nodiscard]] QStringList called(const QString& text) const;
  /// The one that is called so, whole.
  [[nodiscard]] QStringList calledExactly(const QString& text) const;

 private:
  struct Name {
    QString folded;
    QString name;
    bool offered;
  };
  [[nodiscard]] std::vector<Name>::const_iterator from(const QString& folded) const;

  std::vector<Name> names_;
};

/// The names of a document, and its activities by the words in theirs.
class NameIndex {
 public:
  explicit NameIndex(const ObjectContext& context);

  [[nodiscard]] const NameList& customers() const { return customers_; }
  /// Of all customers that are called exactly so.
  [[nodiscard]] const NameList& jobs(const QString& customer) const;
  [[nodiscard]] const NameList& services() const { return services_; }

  /// An activity among those in which words begin as was typed.
  struct Hit {
    Activity* activity;
    int words;  ///< how many of the words are begun in it
  };
  /// The activities in which most of the words are begun, the best first: current ones before completed ones,
  /// younger before older. Never more than `most`.
  [[nodiscard]] std::vector<Hit> activitiesWith(const QStringList& words, std::size_t most) const;

 private:
  struct Listed {
    Activity* activity;
    QString folded;  ///< its names and notes
    bool completed;
  };
  NameList customers_;
  NameList services_;
  QHash<QString, NameList> jobs_;  ///< by the name of their customer
  std::vector<Listed> activities_;
};

}  // namespace pendra
