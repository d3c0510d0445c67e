#include "document/ReadAhead.h"

#include <QFileInfo>

#include "store/PersistentStore.h"

namespace pendra {

ReadAhead::ReadAhead(const QString& path, const ObjectModel& model, const Clock& clock,
                     const Calendar& calendar)
    : path_(path), reading_(std::async(std::launch::async, [this, &model, &clock, &calendar] {
        auto context = std::make_shared<ObjectContext>(model, clock, calendar);
        // Where it fails, opening reads the document, and says what there is to say.
        if (!context->readAhead(path_, stop_.get_token())) hasFailed_ = true;
        return context;
      })) {}

ReadAhead::~ReadAhead() { stop_.request_stop(); }

std::shared_ptr<ObjectContext> ReadAhead::take() {
  if (!reading_.valid()) return nullptr;
  // What is no file may keep the database waiting for ever.
  const bool whole = !hasFailed_ && QFileInfo(path_).isFile() && PersistentStore::checkPages(path_);
  auto context = reading_.get();
  return whole ? context : nullptr;
}

}  // namespace pendra
