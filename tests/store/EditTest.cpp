#include <gmock/gmock.h>

#include "store/UndoStack.h"
#include "support/TestDocument.h"

namespace pendra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const QString kName = QStringLiteral("Rename");
const Error kRefused{QStringLiteral("test"), 0, QStringLiteral("refused")};

/// A document on the disk whose observers write down what they are told.
class Edit : public testing::Test, protected TestWorld {
 protected:
  std::unique_ptr<ObjectContext> owned = opened();
  ObjectContext& context = *owned;
  UndoStack& steps = context.undoStack();
  int told = 0;
  Subscription telling = context.observe([this](const ChangeSet&) { ++told; });

  Customer& customer(const char* name) {
    auto& made = context.insert<Customer>();
    made.setName(QString::fromUtf8(name));
    return made;
  }
  QStringList names() const {
    QStringList all;
    for (const Customer* customer : context.all<Customer>()) all += queries::nameOf(customer);
    return all;
  }
};

TEST_F(Edit, IsToldOnceStoredAndCanBeTakenBack) {
  Ref<Customer> acme;
  ASSERT_TRUE(context.edit(kName, [&] {
    acme = &customer("Acme");
    context.deleteObject(customer("passing"));
  }));
  EXPECT_EQ(told, 1);
  EXPECT_FALSE(context.hasChanges());
  EXPECT_EQ(steps.undoName(), kName);
  ASSERT_TRUE(context.edit(kName, [&] { acme->setName(QStringLiteral("Zed")); }));
  EXPECT_THAT(steps.undo(), IsEmpty());
  EXPECT_EQ(names(), QStringList{"Acme"});
  EXPECT_THAT(steps.undo(), IsEmpty());
  EXPECT_FALSE(acme);
  EXPECT_THAT(steps.redo(), IsEmpty());
  EXPECT_TRUE(acme);
  EXPECT_THAT(steps.redo(), IsEmpty());
  EXPECT_EQ(names(), QStringList{"Zed"});
  EXPECT_EQ(told, 6);
}

TEST_F(Edit, ThatFailsHasNotHappened) {
  ASSERT_TRUE(context.edit(kName, [&] { customer("Acme"); }));
  ASSERT_TRUE(context.edit(kName, [&] {
    customer("Zed");
    const auto inner = context.edit(kName, [&]() -> Result<void> {
      customer("never");
      context.deleteObject(*context.all<Customer>()[0]);
      return kRefused;
    });
    EXPECT_EQ(inner.error().text, kRefused.text);
  }));
  EXPECT_EQ(names(), (QStringList{"Acme", "Zed"}));
  EXPECT_THROW((void)context.edit(kName,
                                  [&] {
                                    context.deleteObject(*context.all<Customer>()[0]);
                                    throw 1;
                                  }),
               int);
  EXPECT_EQ(names(), (QStringList{"Acme", "Zed"}));
  EXPECT_EQ(told, 2);
}

}  // namespace
}  // namespace pendra
