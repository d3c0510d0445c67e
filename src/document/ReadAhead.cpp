#include "document/ReadAhead.h"

#include "store/PersistentStore.h"

namespace pendra {

ReadAhead::ReadAhead(const QString& path, const ObjectModel& model, const Clock& clock,
                     const Calendar& calendar)
    : path_(path),
      reading_(std::async(std::launch::async, [path, &model, &clock, &calendar, stop = stop_.get_token()] {
        auto context = std::make_shared<ObjectContext>(model, clock, calendar);
        // Where it fails, opening reads the document, and says what there is to say.
        [[maybe_unused]] const auto read = context->readAhead(path, stop);
        return context;
      })) {}

ReadAhead::~ReadAhead() { stop_.request_stop(); }

std::shared_ptr<ObjectContext> ReadAhead::take() {
  if (!reading_.valid()) return nullptr;
  const auto whole = PersistentStore::checkPages(path_);
  auto context = reading_.get();
  return whole ? context : nullptr;
}

}  // namespace pendra
