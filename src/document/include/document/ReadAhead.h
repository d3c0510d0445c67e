#pragma once

#include <QString>
#include <atomic>
#include <future>
#include <memory>
#include <stop_token>

#include "store/ObjectContext.h"

namespace pendra {

/// Reads the document that a start will most likely open on a thread of its own, while everything else is
/// made ready that a window needs. Whether it is opened, and whether it is still what was read, is decided
/// later.
class ReadAhead {
 public:
  /// Begins at once. Model, clock and calendar must outlive what is taken.
  ReadAhead(const QString& path, const ObjectModel& model, const Clock& clock, const Calendar& calendar);
  /// Gives up what nobody took.
  ~ReadAhead();
  ReadAhead(const ReadAhead&) = delete;
  ReadAhead& operator=(const ReadAhead&) = delete;

  /// The context for `OpenDocument::read`, once the thread has ended: before that nobody may open the file in
  /// this process. Looks at the file's pages meanwhile, which takes as long. None where nothing could be
  /// read or a page is damaged, and when it was taken before.
  [[nodiscard]] std::shared_ptr<ObjectContext> take();

 private:
  QString path_;
  std::stop_source stop_;
  std::atomic<bool> hasFailed_ = false;
  std::future<std::shared_ptr<ObjectContext>> reading_;
};

}  // namespace pendra
