# Warnings are errors, for every target that links pendra_warnings.
add_library(pendra_warnings INTERFACE)
target_compile_options(pendra_warnings INTERFACE
  -Wall -Wextra -Wpedantic   # the compiler's own judgement
  -Wshadow                   # a name that hides another reads as the wrong one
  -Wconversion               # a silently narrowed second is a wrong bill
  -Wnon-virtual-dtor         # interfaces are deleted through their base
  -Wold-style-cast           # casts can be searched for
  -Werror)
# No implicit conversion between text and bytes, no Java-style iterators, no foreach; "+" on texts builds once.
target_compile_definitions(pendra_warnings INTERFACE
  QT_NO_CAST_FROM_BYTEARRAY QT_NO_FOREACH QT_NO_KEYWORDS QT_STRICT_ITERATORS QT_USE_QSTRINGBUILDER)
