#include "document/OpenDocument.h"

#include <QFileInfo>

#include <string_view>

#include "document/HaltedEntries.h"
#include "model/Queries.h"
#include "platform/Files.h"

namespace pendra {

namespace {

/// What was sent stays what it is. But whoever takes back that it was marked as unsent may do that again: its
/// date is the one of then, because a step is not done to what has another value by now.
bool hasFixedTime(const ManagedObject& object, const PropertyDescriptor* property) {
  if (&object.entity() != &TimeEntry::descriptor()) return false;
  const auto& entry = static_cast<const TimeEntry&>(object);
  const bool isDateOfSending = property && std::string_view(property->name) == "dateSubmitted";
  return entry.timeIsFixed() && !(isDateOfSending && !entry.sendingSince());
}

/// No activity has another customer's job.
bool namesGoTogether(const ManagedObject& object) {
  if (&object.entity() != &Activity::descriptor()) return true;
  const auto& activity = static_cast<const Activity&>(object);
  return !activity.job() || activity.job()->customer() == activity.customer();
}

bool isMoreThanSignOfLife(const ChangeSet& news) {
  return news.touches<TimeEntry>() || news.touches<Activity>() || news.touches<Customer>() ||
         news.touches<Job>() || news.touches<Service>() || news.touches<Identity>() ||
         news.changedAny<DocumentSettings>("standalone");
}

/// Every document has settings, and they are those of its first identity.
void completeSettings(ObjectContext& context) {
  DocumentSettings* settings = queries::firstDocument(context);
  Identity* identity = queries::firstIdentity(context);
  if (!settings) {
    identity = &context.insert<Identity>();
    settings = &context.insert<DocumentSettings>();
  }
  if (identity) settings->setIdentity(identity);
}

}  // namespace

Result<std::unique_ptr<OpenDocument>> OpenDocument::read(const QString& path, const ObjectModel& model,
                                                         const Clock& clock, const Calendar& calendar) {
  return read(path, std::make_shared<ObjectContext>(model, clock, calendar));
}

Result<std::unique_ptr<OpenDocument>> OpenDocument::read(const QString& path,
                                                         std::shared_ptr<ObjectContext> context) {
  const auto lastSave = timeOfLastSave(path);
  if (auto opened = context->open(path); !opened) return opened.error();
  std::unique_ptr<OpenDocument> document(new OpenDocument(path, std::move(context)));
  // Nobody's hand did this; where it cannot be stored, the commit's state says so.
  [[maybe_unused]] const auto done = document->context_->edit(QString(), {.undoable = false}, [&] {
    completeSettings(*document->context_);
    haltRunningEntries(*document->context_, lastSave);
  });
  // A start that will hand over may be reading the file still.
  if (document->context_->commitState().failure) {
    [[maybe_unused]] const auto saved = document->context_->save();
  }
  document->settings_ = queries::firstDocument(*document->context_);
  return document;
}

OpenDocument::OpenDocument(QString path, std::shared_ptr<ObjectContext> context)
    : path_(std::move(path)), context_(std::move(context)), openedAt_(context_->clock().now()) {
  context_->setFixed(&hasFixedTime);
  context_->setWhole(&namesGoTogether);
  edits_ = context_->observe([this](const ChangeSet& news) {
    if (isMoreThanSignOfLife(news)) isBackedUp = false;
  });
}

OpenDocument::~OpenDocument() { context_->close(); }

bool OpenDocument::isAt(const QString& path) const { return isSameFile(path, path_); }

QString OpenDocument::displayName() const { return QFileInfo(path_).completeBaseName(); }

}  // namespace pendra
