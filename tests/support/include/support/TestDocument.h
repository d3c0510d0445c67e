#pragma once

#include <gtest/gtest.h>

#include "model/Queries.h"
#include "support/ManualClock.h"
#include "support/TestModel.h"
#include "support/TestPlaces.h"

namespace pendra {

/// What contexts need of the world: a clock that stands still, the calendar of UTC, and a folder.
struct TestWorld {
  ManualClock clock;
  Calendar calendar{QTimeZone::utc()};
  TestPlaces places;

  [[nodiscard]] QString path(const QString& name = QStringLiteral("Work.pdr")) const {
    return places.documents + u'/' + name;
  }
  [[nodiscard]] std::unique_ptr<ObjectContext> emptyContext() const {
    return std::make_unique<ObjectContext>(testModel(), clock, calendar);
  }
  /// The document at `path`, which must be readable.
  [[nodiscard]] std::unique_ptr<ObjectContext> opened(const QString& path) const {
    auto context = emptyContext();
    const auto read = context->open(path);
    EXPECT_TRUE(read) << (read ? "" : read.error().text.toStdString());
    return context;
  }
  [[nodiscard]] std::unique_ptr<ObjectContext> opened() const { return opened(path()); }
};

/// A context without a file, for what needs no disk.
struct TestDocument : TestWorld {
  std::unique_ptr<ObjectContext> owned = emptyContext();
  ObjectContext& context = *owned;
};

}  // namespace pendra
