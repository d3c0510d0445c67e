# Warnings are errors, for every target that links pendra_warnings.
add_library(pendra_test_warnings INTERFACE)
target_compile_options(pendra_test_warnings INTERFACE
  -Wall -Wextra -Wpedantic   # the compiler's own judgement
  -Wshadow                   # a name that hides another reads as the wrong one
  -Wconversion               # a silently narrowed second is a wrong bill
  -Wnon-virtual-dtor         # interfaces are deleted through their base
  -Wold-style-cast           # casts can be searched for
  -Werror)
# No implicit conversion from bytes to text, no Java-style iterators, no foreach; "+" on texts builds once.
target_compile_definitions(pendra_test_warnings INTERFACE
  QT_NO_CAST_FROM_BYTEARRAY QT_NO_FOREACH QT_NO_KEYWORDS QT_STRICT_ITERATORS QT_USE_QSTRINGBUILDER)

# A literal that becomes a text says so, QStringLiteral("..."), and one that is only looked at is u"...": both are made
# by the compiler. Tests do without, because `EXPECT_EQ(text, "Acme")` reads best and nobody waits for it.
add_library(pendra_warnings INTERFACE)
target_link_libraries(pendra_warnings INTERFACE pendra_test_warnings)
target_compile_definitions(pendra_warnings INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII)
