#include <gmock/gmock.h>

#include <map>
#include <random>

#include "store/UndoStack.h"
#include "support/TestDocument.h"

namespace pendra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// Every value of every object, with its place; of what holds many, their identifiers.
using Image = std::vector<std::pair<QString, PropertyValue>>;

Image imageOf(const ObjectContext& context) {
  Image image;
  const auto add = [&](const auto& objects) {
    for (const ManagedObject* object : objects) {
      const QString place = QLatin1StringView(object->entity().name) + QString::number(object->objectID());
      for (const PropertyDescriptor& property : object->entity().properties) {
        QString held;
        if (property.kind == Kind::ToMany) {
          for (const ManagedObject* target :
               property.access.toMany(const_cast<ManagedObject&>(*object)).targets())
            held += QString::number(target->objectID()) + u',';
        }
        image.emplace_back(place + QLatin1StringView(property.name),
                           property.kind == Kind::ToMany ? held : valueOf(*object, property));
      }
    }
  };
  add(context.all<Customer>());
  add(context.all<Job>());
  add(context.all<Service>());
  add(context.all<Activity>());
  add(context.all<TimeEntry>());
  return image;
}

/// Edits of all kinds, drawn from a seed.
class Walk {
 public:
  Walk(ObjectContext& context, unsigned seed) : context_(context), random_(seed) {}

  void edit() {
    const int deeds = 1 + number(6);
    EXPECT_TRUE(context_.edit(QStringLiteral("Step"), [&] {
      context_.insert<Customer>().setName(QStringLiteral("c%1").arg(number(20)));  // never nothing
      for (int deed = 0; deed < deeds; ++deed) act();
      if (number(4) > 0) return;
      const auto failed = context_.edit(QString(), [&]() -> Result<void> {
        for (int deed = 0; deed < 5; ++deed) act();
        return Error{};
      });
      EXPECT_FALSE(failed);
    }));
    remember<Customer>();
    remember<Activity>();
    remember<TimeEntry>();
  }
  /// Every reference that was ever taken is alive just when its object is in the document, and is the same.
  void expectReferencesRight() const {
    std::map<Key, const ManagedObject*> there;
    const auto add = [&](const auto& objects) {
      for (const ManagedObject* object : objects) there[keyOf(*object)] = object;
    };
    add(context_.all<Customer>());
    add(context_.all<Activity>());
    add(context_.all<TimeEntry>());
    for (const auto& [key, reference] : references_) {
      const auto found = there.find(key);
      EXPECT_EQ(reference.get(), found == there.end() ? nullptr : found->second) << key.first << key.second;
    }
  }

 private:
  using Key = std::pair<std::string, qint64>;
  static Key keyOf(const ManagedObject& object) { return {object.entity().name, object.objectID()}; }
  int number(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
  template <class T>
  T* any() {
    const auto all = context_.all<T>();
    return all.empty() || number(8) == 0 ? nullptr : all[random_() % all.size()];
  }
  template <class T>
  void remember() {
    const auto all = context_.all<T>();
    for (std::size_t i = all.size(); i-- > 0 && references_.try_emplace(keyOf(*all[i]), all[i]).second;) {
    }
  }
  template <class T>
  void discard() {
    if (T* object = any<T>()) context_.deleteObject(*object);
  }
  template <class Held>
  std::optional<Held> maybe(Held held) {
    return number(4) ? std::optional(std::move(held)) : std::nullopt;
  }
  void act() {
    static const QString kStrange = QStringLiteral("“Zürich” \\ \"x\" 100%2 \n\t😀") + QChar(0) + u"end";
    Activity* activity = any<Activity>();
    Job* job = any<Job>();
    TimeEntry* entry = any<TimeEntry>();
    switch (number(14)) {
      case 0:
      case 1:
        return context_.insert<Activity>().setCustomer(any<Customer>());
      case 2:
        job = &context_.insert<Job>();
        job->setShown(maybe(false));
        return job->setCustomer(any<Customer>());
      case 3:
        return context_.insert<Service>().setShown(maybe(true));
      case 4:
      case 5:
      case 6:
        return context_.insert<TimeEntry>().setActivity(activity);
      case 7:
        if (activity) activity->setJob(job);
        return;
      case 8:
        if (activity) activity->setNotes(maybe(number(2) ? kStrange : QString()));
        return;
      case 9:
        if (entry) entry->setActivity(activity);
        return;
      case 10:
        if (!entry) return;
        entry->setDuration(maybe(number(9) / 7.0));
        entry->setStart(maybe(Instant{817203661.123456 + number(9)}));
        entry->setRunning(maybe(number(2) == 0));
        return entry->setDateSubmitted(maybe(kReferenceInstant));
      case 11:
        return number(3) ? discard<TimeEntry>() : discard<Customer>();
      case 12:
        return number(3) ? discard<Job>() : discard<Activity>();
      default:
        if (auto* one = any<Customer>()) one->setName(QStringLiteral("n%1").arg(number(20)));
        return;
    }
  }

  ObjectContext& context_;
  std::mt19937 random_;
  std::map<Key, Ref<ManagedObject>> references_;
};

class Undo : public testing::Test, protected TestWorld {
 protected:
  void walk(ObjectContext& context, Walk& walk, int edits) {
    const Image start = imageOf(context);
    for (int i = 0; i < edits; ++i) walk.edit();
    const Image end = imageOf(context);
    UndoStack& steps = context.undoStack();
    for (int i = 0; i < edits; ++i) ASSERT_THAT(steps.undo(), IsEmpty());
    EXPECT_TRUE(imageOf(context) == start);
    walk.expectReferencesRight();
    expectLookUpsRight(context);
    for (int i = 0; i < edits; ++i) ASSERT_THAT(steps.redo(), IsEmpty());
    EXPECT_TRUE(imageOf(context) == end);
    walk.expectReferencesRight();
    expectLookUpsRight(context);
  }
  static void expectLookUpsRight(const ObjectContext& context) {
    std::size_t found = 0;
    for (int number = 0; number < 20; ++number) {
      for (const char* kind : {"c%1", "n%1"})
        found += queries::customersNamed(context, QString::fromUtf8(kind).arg(number)).size();
    }
    EXPECT_EQ(found, context.all<Customer>().size());
    const auto running = [](const TimeEntry& entry) { return entry.running() == true; };
    EXPECT_EQ(context.flagged<TimeEntry>("running").copy(), context.fetch<TimeEntry>(running));
  }
};

TEST_F(Undo, LeadsBackToTheStartAndForwardToTheEnd) {
  const auto context = emptyContext();
  Walk one(*context, 20261124);
  for (int round = 0; round < 20; ++round) walk(*context, one, static_cast<int>(UndoStack::kMostSteps));
}

TEST_F(Undo, IsInTheFileAsItIsInMemory) {
  auto context = opened();
  Walk one(*context, 20261125);
  walk(*context, one, 60);
  for (int i = 0; i < 30; ++i) context->undoStack().undo();
  const Image image = imageOf(*context);
  context.reset();
  EXPECT_TRUE(imageOf(*opened()) == image);
}

/// An activity of a customer with an entry, each made by a step of its own.
struct UndoBesideOthers : Undo {
  std::unique_ptr<ObjectContext> owned = emptyContext();
  ObjectContext& context = *owned;
  UndoStack& steps = context.undoStack();
  Customer& acme = context.insert<Customer>();
  Activity* activity = nullptr;
  TimeEntry* entry = nullptr;

  UndoBesideOthers() {
    edit("activity", [&] { (activity = &context.insert<Activity>())->setCustomer(&acme); });
    edit("entry", [&] { entry = &activity->addEntry(); });
  }
  template <class Work>
  void edit(const char* name, const Work& work) {
    EXPECT_TRUE(context.edit(QString::fromUtf8(name), work));
  }
  template <class Work>
  void editForGood(const Work& work) {
    EXPECT_TRUE(context.edit(QString(), {.undoable = false}, work));
  }
};

TEST_F(UndoBesideOthers, LeavesWhatHasMovedOnAndNamesIt) {
  edit("both", [&] {
    activity->setNotes(QStringLiteral("mine"));
    activity->setBillable(true);
  });
  editForGood([&] { activity->setNotes(QStringLiteral("theirs")); });
  const auto left = steps.undo();
  ASSERT_THAT(left, SizeIs(1));
  EXPECT_TRUE(left[0].object == activity && left[0].property->name == std::string("notes"));
  EXPECT_EQ(activity->notes(), "theirs");
  EXPECT_EQ(activity->billable(), std::nullopt);
  EXPECT_THAT(steps.redo(), IsEmpty()) << "what was not undone is not done again";
  EXPECT_EQ(activity->notes(), "theirs");
  EXPECT_EQ(activity->billable(), true);
}

TEST_F(UndoBesideOthers, TakesNoNameAwayForOneThatHasGone) {
  Customer& zed = context.insert<Customer>();
  edit("move", [&] { activity->setCustomer(&zed); });
  editForGood([&] { context.deleteObject(acme); });
  const auto left = steps.undo();
  ASSERT_THAT(left, SizeIs(1));
  EXPECT_TRUE(left[0].object == activity && left[0].property->name == std::string("customer"));
  EXPECT_EQ(activity->customer(), &zed);
}

TEST_F(UndoBesideOthers, PutsNothingTogetherThatDoesNotBelongTogether) {
  Customer& zed = context.insert<Customer>();
  Job& roof = context.insert<Job>();
  roof.setCustomer(&acme);
  Job& tower = context.insert<Job>();
  tower.setCustomer(&zed);
  context.setWhole([this](const ManagedObject& object) {
    return &object != activity || !activity->job() || activity->job()->customer() == activity->customer();
  });
  edit("move", [&] { activity->setCustomer(&zed); });
  editForGood([&] { activity->setJob(&tower); });
  EXPECT_THAT(steps.undo(), SizeIs(1)) << "the job is none of the old customer's";
  EXPECT_TRUE(activity->customer() == &zed && activity->job() == &tower);
  edit("back", [&] {
    activity->setCustomer(&acme);
    activity->setJob(&roof);
  });
  EXPECT_THAT(steps.undo(), IsEmpty());
  EXPECT_TRUE(activity->customer() == &zed && activity->job() == &tower);
}

TEST_F(UndoBesideOthers, ForgetsWhatALaterEditMadeImpossible) {
  edit("notes", [&] { activity->setNotes(QStringLiteral("x")); });
  edit("deletion", [&] { context.deleteObject(*entry); });
  edit("name", [&] { acme.setName(QStringLiteral("Acme")); });
  editForGood([&] { context.deleteObject(*activity); });
  EXPECT_EQ(steps.undoName(), "name");
  EXPECT_THAT(steps.undo(), IsEmpty());
  const auto left = steps.undo();
  ASSERT_THAT(left, SizeIs(1)) << "an entry does not come back without its activity";
  EXPECT_EQ(left[0].entity, &TimeEntry::descriptor());
  EXPECT_FALSE(left[0].object);
  EXPECT_TRUE(context.all<TimeEntry>().empty());
  EXPECT_FALSE(steps.canUndo());
  EXPECT_EQ(steps.redoName(), "name");
  editForGood([&] { context.insert<Customer>(); });
  EXPECT_TRUE(steps.canRedo());
  edit("new", [&] { context.insert<Customer>(); });
  EXPECT_FALSE(steps.canRedo());
}

TEST_F(UndoBesideOthers, KeepsTheNewestHundredSteps) {
  const Ref<TimeEntry> gone(entry);
  edit("deletion", [&] { context.deleteObject(*entry); });
  for (std::size_t i = 0; i < UndoStack::kMostSteps; ++i)
    edit("name", [&] { acme.setName(QString::number(i)); });
  std::size_t taken = 0;
  for (; steps.canUndo(); ++taken) EXPECT_THAT(steps.undo(), IsEmpty());
  EXPECT_EQ(taken, UndoStack::kMostSteps);
  EXPECT_FALSE(gone);
  EXPECT_EQ(acme.name(), std::nullopt);
  steps.clear();
  EXPECT_FALSE(steps.canRedo());
  edit("customer", [&] { context.insert<Customer>(); });
  editForGood([&] { context.insert<Customer>(); });
  std::ignore = steps.undo();
  edit("name", [&] { acme.setName(QStringLiteral("Acme")); });
  EXPECT_EQ(context.all<Customer>().size(), 2U) << "what was undone is no more and stood between others";
}

}  // namespace
}  // namespace pendra
