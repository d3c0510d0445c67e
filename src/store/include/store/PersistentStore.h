#pragma once
// One document is one SQLite file. Between saves the file is complete and can be copied byte for byte;
// a file that could not be read is never written to, because there is then no store to write with.

#include <QString>
#include <memory>
#include <optional>
#include <stop_token>

#include "platform/Files.h"
#include "platform/Result.h"
#include "store/Descriptors.h"

namespace pendra {

class ObjectContext;
struct FileMark;

/// Why a document is not written to its place though it could be: another file may be meant by it.
enum class Displaced {
  Moved = 1,  ///< the file has another path now
  Replaced,   ///< another version stands in its place, or it was changed or damaged there
  OutOfReach  ///< its folder is gone, or is that of another disk
};

/// What happened to the file of a document that it survived.
struct FileStory {
  int madeAnew = 0;   ///< so often it had been deleted
  int takenOver = 0;  ///< so often a copy had been put in its place
};

/// So many rows, and the sum of one number in them.
struct Tally {
  qint64 rows = 0;
  double sum = 0;
};

/// The file of a context, held against every other process for as long as the store lives.
class PersistentStore {
 public:
  /// Opens the file; creates the tables of a missing or empty one, and brings one of an older layout to
  /// the newest after having kept a copy of it. Fails on a file that is foreign, of a newer layout, held by
  /// another process, or damaged at first sight, without having written to it. The model must outlive the
  /// store.
  static Result<std::unique_ptr<PersistentStore>> open(const QString& path, const ObjectModel& model);
  /// Reads a document as it was last saved, whoever holds it, into an empty context, which stays without a
  /// file. Writes nothing, keeps the file for no longer than copying it into memory takes, and brings no
  /// older layout up to date but that copy.
  static Result<void> look(const QString& path, ObjectContext& context, const ObjectModel& model);
  /// Reads every row of a document that nobody holds into an empty context, which stays without a file,
  /// before anybody holds it: `isStill` tells later whether that is what it holds. Its pages are looked at by
  /// `checkPages`. Writes nothing, and fails wherever opening would have more to do than to read, and at
  /// `stop`; what has been read by then is worth nothing.
  static Result<FileMark> readAhead(const QString& path, ObjectContext& context, const ObjectModel& model,
                                    const std::stop_token& stop);
  /// Looks at every page of the file for damage, on whatever thread.
  static Result<void> checkPages(const QString& path);
  /// Reads the whole file without changing it: whether it is an undamaged document that `open` would take.
  static Result<void> check(const QString& path, const ObjectModel& model);
  /// Counts the rows of an entity in the file, and adds up a number in them, without reading anything else
  /// and without a lock on the file: for copies that nobody writes to.
  static Result<Tally> tally(const QString& path, const EntityDescriptor& entity, const char* number);
  /// Brings a document that a killed program left half written back to its last save, after which its journal
  /// is gone. Fails, and has left all alone, where there is no document or another process holds it.
  static Result<void> recover(const QString& path, const ObjectModel& model);
  /// Removes a document that no other process holds.
  static Result<void> discard(const QString& path);
  ~PersistentStore();
  PersistentStore(const PersistentStore&) = delete;
  PersistentStore& operator=(const PersistentStore&) = delete;

  /// Reads every row into an empty context, and every page of the file, which may turn out damaged.
  Result<void> read(ObjectContext& context);
  /// Whether the file is the one that was read ahead, as it was then.
  [[nodiscard]] bool isStill(const FileMark& mark) const;
  /// Writes the context's changes in one transaction, durable when it returns; all of it into a new file
  /// when the old one was deleted. Goes on with a copy of the file that was put in its place. Writes nothing
  /// where the path may mean another file by now: `displaced` tells that failure. Waits `patience`
  /// milliseconds for another program that reads the file.
  Result<void> write(const ObjectContext& context, int patience);

  /// Where the file lies, links followed.
  [[nodiscard]] const QString& path() const;
  /// Whether the file may be written to.
  [[nodiscard]] bool isWritable() const;
  /// Whether other programs that would open the document are kept out.
  [[nodiscard]] bool isLocked() const;
  [[nodiscard]] const FileStory& story() const { return story_; }
  /// The copy that was kept when the document was brought to a newer layout; empty when it was not.
  [[nodiscard]] const QString& layoutCopy() const;
  /// The path that the file has which was moved; empty when nobody knows.
  [[nodiscard]] QString movedTo() const;

  /// Writes the whole document to another file, which is not held.
  Result<void> writeCopy(const ObjectContext& context, const QString& path, Existing existing) const;
  /// Writes the whole document to a new file at that path, which is its file from now on.
  Result<void> moveTo(const ObjectContext& context, const QString& path, Existing existing);
  /// Goes on with the file that was moved, where it is now.
  Result<void> follow();

 private:
  struct Parts;
  explicit PersistentStore(std::unique_ptr<Parts> parts);
  Result<void> findFile(const ObjectContext& context);
  Result<void> writeToFile(const ObjectContext& context, int patience);
  static Result<std::unique_ptr<Parts>> writeDraft(const ObjectContext& context, const Draft& draft,
                                                   const ObjectModel& model);
  Result<void> readRows(ObjectContext& context);
  void makeObjects(ObjectContext& context);

  std::unique_ptr<Parts> parts_;
  FileStory story_;
};

/// Which of those reasons a failure to write has; none when it has another.
[[nodiscard]] std::optional<Displaced> displaced(const Error& error);

/// Where the database keeps what it takes back when a save was cut off.
[[nodiscard]] QString journalOf(const QString& document);

/// Marks the file as a document of this program ("Pdra").
inline constexpr int kApplicationID = 0x50647261;

/// Where the copy of a document is kept before it is brought to a newer layout: beside it, a backup by its
/// name, at the first name that is free.
[[nodiscard]] QString pathOfLayoutCopy(const QString& document, int layout);

}  // namespace pendra
