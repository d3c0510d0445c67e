#pragma once

#include <SQLiteCpp/SQLiteCpp.h>

#include <memory>
#include <stop_token>

#include "platform/Result.h"

namespace pendra {

/// A document's database, of which only the rows are trusted: no trigger, view or untrusted function of the
/// file runs, and what never comes to an end is ended.
class Connection {
 public:
  /// Waits `patience` milliseconds for another program that uses the file. Throws SQLite::Exception. One
  /// thread uses it: the database takes no lock of its own at each call, of which reading a row makes dozens.
  Connection(const QString& path, int openFlags, int patience);

  [[nodiscard]] SQLite::Database& database() { return database_; }
  /// Allows so many steps of the database's machine from now on; work that takes more is ended as a failure.
  void allow(qint64 steps) { allowed_ = steps; }
  /// Ends all work as a failure as soon as that is asked for.
  void endAt(std::stop_token stop) { stop_ = std::move(stop); }
  /// Allows what reading every row and page of the file takes many times over.
  void allowReadingAll();

  /// Runs what may throw the database's exception and hands its failure on as a value, in the system's own
  /// words where the system is the reason.
  template <class Work>
  auto guarded(const Work& work) -> Result<decltype(work())> {
    try {
      if constexpr (std::is_void_v<decltype(work())>) {
        work();
        return {};
      } else {
        return work();
      }
    } catch (const SQLite::Exception& failure) {
      return errorFrom(failure);
    }
  }
  /// Opens a connection, or says why there is none.
  static Result<std::unique_ptr<Connection>> open(const QString& path, int openFlags, int patience);

 private:
  static int countSteps(void* connection);
  [[nodiscard]] Error errorFrom(const SQLite::Exception& failure) const;

  SQLite::Database database_;
  qint64 allowed_ = 0;
  std::stop_token stop_;
};

/// The steps that writing or erasing one row never needs.
inline constexpr qint64 kStepsOfARow = 20'000'000;

[[noreturn]] void throwDamaged();
/// Whether a failure says that the file is no undamaged database.
[[nodiscard]] bool isDamaged(const Error& error);

}  // namespace pendra
