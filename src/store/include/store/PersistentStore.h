#pragma once
// One document is one SQLite file. Between saves the file is complete and can be copied byte for byte;
// a file that could not be read is never written to, because there is then no store to write with.

#include <QString>
#include <memory>

#include "platform/Result.h"
#include "store/Descriptors.h"

namespace pendra {

class ObjectContext;

/// The file of a context, held against every other process for as long as the store lives.
class PersistentStore {
 public:
  /// Opens the file; creates the tables of a missing or empty one, and brings one of an older layout to
  /// the newest after having kept a copy of it. Fails on a file that is foreign, damaged, of a newer
  /// layout, or held by another process, without having written to it. The model must outlive the store.
  static Result<std::unique_ptr<PersistentStore>> open(const QString& path, const ObjectModel& model);
  /// Reads the whole file without changing it: whether it is an undamaged document that `open` would take.
  static Result<void> check(const QString& path, const ObjectModel& model);
  /// Brings a document that a killed program left half written back to its last save, after which its journal
  /// is gone. Fails, and has left all alone, where there is no document or another process holds it.
  static Result<void> recover(const QString& path, const ObjectModel& model);
  /// Removes a document that no other process holds.
  static Result<void> discard(const QString& path);
  ~PersistentStore();
  PersistentStore(const PersistentStore&) = delete;
  PersistentStore& operator=(const PersistentStore&) = delete;

  /// Reads every row into an empty context.
  Result<void> read(ObjectContext& context);
  /// Writes the context's changes in one transaction, durable when it returns; all of it into a new file
  /// when the old one has vanished from its path. Waits `patience` milliseconds for another program that
  /// reads the file.
  Result<void> write(const ObjectContext& context, int patience);

 private:
  struct Parts;
  explicit PersistentStore(std::unique_ptr<Parts> parts);
  Result<void> writeAnew(const ObjectContext& context);
  void writeChanges(const ObjectContext& context);
  void writeAll(const ObjectContext& context);

  std::unique_ptr<Parts> parts_;
};

/// Where the database keeps what it takes back when a save was cut off.
[[nodiscard]] QString journalOf(const QString& document);

/// Marks the file as a document of this program ("Pdra").
inline constexpr int kApplicationID = 0x50647261;

/// Where the copy of a document is kept before it is brought to a newer layout: beside it, a backup by its
/// name, at the first name that is free.
[[nodiscard]] QString pathOfLayoutCopy(const QString& document, int layout);

}  // namespace pendra
