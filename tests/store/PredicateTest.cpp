#include "store/Predicate.h"

#include "support/TestDocument.h"

namespace pendra {
namespace {

TEST(Like, MatchesTheWholeTextByCase) {
  const struct {
    QStringView text;
    QStringView pattern;
    bool matches;
  } rows[] = {{u"Acme", u"Acme", true},    {u"Acme", u"acme", false}, {u"Acme Ltd", u"Acme", false},
              {u"Acme Ltd", u"A*d", true}, {u"Ad", u"A*d", true},     {u"aXbXc", u"*Xc", true},
              {u"aXbYc", u"*X*Y*", true},  {u"Acme", u"Ac?e", true},  {u"Ac", u"Ac?", false},
              {u"a\\*", u"a\\*", true},    {u"a*", u"a\\*", false},   {u"", u"", true},
              {u"a", u"", false}};
  for (const auto& row : rows)
    EXPECT_EQ(matchesLike(row.text, row.pattern), row.matches) << row.pattern.toUtf8().toStdString();
}

TEST(Predicate, IsAskedForByText) {
  TestDocument document;
  auto& acme = document.context.insert<Customer>();
  acme.setName(QStringLiteral("Acme"));
  auto& activity = document.context.insert<Activity>();  // open and without a job
  activity.setCustomer(&acme);
  const std::pair<QStringView, std::optional<bool>> rows[] = {
      {u"customer.name LIKE \"Acme\" &&  completed ==NO", true},
      {u" customer.name LIKE \"A*\" && completed ==NO ", true},
      {u"customer.name LIKE \"Acme\" && completed ==YES", false},
      {u"completed != YES", true},
      {u"job.name LIKE \"*\"", false},
      {u"job.name != \"x\"", true},
      {u"nothing == \"x\"", false},
      {u"customer.name LIKE \"Acme \"Best\"\" && completed ==NO", std::nullopt},
      {u"customer.name LIKE \"5\" disk\" && completed ==NO", std::nullopt},
      {u"customer.name LIKE \"Acme", std::nullopt},
      {u"customer. LIKE \"Acme\"", std::nullopt},
      {u"customer.name CONTAINS \"Acme\"", std::nullopt},
      {u"customer.name LIKE NO", std::nullopt},
      {u"completed ==NO &&", std::nullopt},
      {u"", std::nullopt}};
  for (const auto& [text, matches] : rows) {
    const auto predicate = Predicate::parse(text);
    ASSERT_EQ(static_cast<bool>(predicate), matches.has_value()) << text.toUtf8().toStdString();
    EXPECT_EQ(predicate && predicate.value().matches(activity), matches.value_or(false))
        << text.toUtf8().toStdString();
  }
}

}  // namespace
}  // namespace pendra
