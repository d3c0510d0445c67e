#include "store/Predicate.h"

#include "support/Rows.h"
#include "support/TestDocument.h"

namespace pendra {
namespace {

struct Pattern {
  const char* name;
  const char16_t* text;
  const char16_t* pattern;
  bool matches;
};

class Like : public testing::TestWithParam<Pattern> {};

TEST_P(Like, Matches) { EXPECT_EQ(matchesLike(GetParam().text, GetParam().pattern), GetParam().matches); }

INSTANTIATE_TEST_SUITE_P(Texts, Like,
                         testing::Values(Pattern{"Itself", u"Acme", u"Acme", true},
                                         Pattern{"CaseCounts", u"Acme", u"acme", false},
                                         Pattern{"TheWholeText", u"Acme Ltd", u"Acme", false},
                                         Pattern{"StarTakesARun", u"Acme Ltd", u"A*d", true},
                                         Pattern{"StarTakesNothing", u"Ad", u"A*d", true},
                                         Pattern{"StarGoesBack", u"aXbXc", u"*Xc", true},
                                         Pattern{"TwoStars", u"aXbYc", u"*X*Y*", true},
                                         Pattern{"MarkIsOneUnit", u"Acme", u"Ac?e", true},
                                         Pattern{"MarkIsNotNothing", u"Ac", u"Ac?", false},
                                         Pattern{"BackslashIsItself", u"a\\*", u"a\\*", true},
                                         Pattern{"BackslashEscapesNothing", u"a*", u"a\\*", false},
                                         Pattern{"EmptyMatchesEmpty", u"", u"", true},
                                         Pattern{"EmptyPattern", u"a", u"", false}),
                         RowName());

struct Text {
  const char* name;
  const char16_t* text;
  bool parses;
  bool matches = false;
};

/// Asked of an open activity of the customer "Acme" without a job.
class OneActivity : public testing::TestWithParam<Text>, protected TestDocument {};

TEST_P(OneActivity, IsAskedForByText) {
  auto& acme = context.insert<Customer>();
  acme.setName(QStringLiteral("Acme"));
  auto& activity = context.insert<Activity>();
  activity.setCustomer(&acme);
  const auto predicate = Predicate::parse(GetParam().text);
  ASSERT_EQ(static_cast<bool>(predicate), GetParam().parses);
  EXPECT_EQ(predicate && predicate.value().matches(activity), GetParam().matches);
}

INSTANTIATE_TEST_SUITE_P(
    Conditions, OneActivity,
    testing::Values(Text{"CustomerAndOpen", u"customer.name LIKE \"Acme\" &&  completed ==NO", true, true},
                    Text{"SurroundingBlanks", u" customer.name LIKE \"A*\" && completed ==NO ", true, true},
                    Text{"Completed", u"customer.name LIKE \"Acme\" && completed ==YES", true, false},
                    Text{"NotCompleted", u"completed != YES", true, true},
                    Text{"MissingJobIsNotLike", u"job.name LIKE \"*\"", true, false},
                    Text{"MissingJobDiffers", u"job.name != \"x\"", true, true},
                    Text{"UnknownKey", u"nothing == \"x\"", true, false},
                    Text{"QuoteInTheName", u"customer.name LIKE \"Acme \"Best\"\" && completed ==NO", false},
                    Text{"OneQuote", u"customer.name LIKE \"5\" disk\" && completed ==NO", false},
                    Text{"NoQuoteAtTheEnd", u"customer.name LIKE \"Acme", false},
                    Text{"EmptyKey", u"customer. LIKE \"Acme\"", false},
                    Text{"OtherWord", u"customer.name CONTAINS \"Acme\"", false},
                    Text{"LikeWantsAText", u"customer.name LIKE NO", false},
                    Text{"DanglingAnd", u"completed ==NO &&", false}, Text{"Empty", u"", false}),
    RowName());

}  // namespace
}  // namespace pendra
