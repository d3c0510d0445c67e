# One shape for every target, so that a folder's CMakeLists.txt says only what is its own.

# The headers that nearly every source reads, compiled once for all targets without widgets.
add_library(pendra_pch STATIC ${CMAKE_SOURCE_DIR}/cmake/pch.cpp)
target_link_libraries(pendra_pch PRIVATE pendra_warnings Qt6::Core)
target_precompile_headers(pendra_pch PRIVATE
  <algorithm> <array> <functional> <map> <memory> <optional> <span> <string> <vector>
  <QByteArray> <QDateTime> <QHash> <QList> <QString> <QStringList>)

# pendra_library(NAME platform SOURCES ... HEADERS include/... DEPENDS ... [PRIVATE ...] [WIDGETS]):
# its sources, and its public headers as one file set. Every file is named: one that nobody builds cannot hide.
# WIDGETS targets run moc and uic and do without the shared precompiled header.
function(pendra_library)
  cmake_parse_arguments(ARG "WIDGETS" "NAME" "SOURCES;HEADERS;DEPENDS;PRIVATE" ${ARGN})
  set(target pendra_${ARG_NAME})
  add_library(${target} STATIC ${ARG_SOURCES})
  target_sources(${target} PUBLIC FILE_SET HEADERS
    BASE_DIRS ${CMAKE_CURRENT_SOURCE_DIR}/include FILES ${ARG_HEADERS})
  target_link_libraries(${target} PUBLIC ${ARG_DEPENDS} PRIVATE pendra_warnings ${ARG_PRIVATE})
  set_target_properties(${target} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
  pendra_compile(${target} "${ARG_WIDGETS}")
endfunction()

# Precompiled headers for a target: the shared one, or its own with the widgets.
function(pendra_compile target widgets)
  if(widgets)
    set_target_properties(${target} PROPERTIES AUTOMOC ON AUTOUIC ON)
    target_precompile_headers(${target} PRIVATE
      <algorithm> <functional> <memory> <optional> <vector>
      <QAbstractTableModel> <QDateTime> <QHash> <QPainter> <QString> <QWidget>)
  else()
    target_precompile_headers(${target} REUSE_FROM pendra_pch)
  endif()
endfunction()

# pendra_program(NAME vantor-sim DEPENDS ...): one program from the sources of this folder.
function(pendra_program)
  cmake_parse_arguments(ARG "WIDGETS" "NAME" "DEPENDS;SOURCES" ${ARGN})
  add_executable(${ARG_NAME} ${ARG_SOURCES})
  target_link_libraries(${ARG_NAME} PRIVATE ${ARG_DEPENDS} pendra_warnings)
  pendra_compile(${ARG_NAME} "${ARG_WIDGETS}")
endfunction()

# What tests is compiled without optimisation, in half the time; what is tested is as its users have it.
function(pendra_unoptimised target)
  target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O0>)
endfunction()

# pendra_test(NAME store SOURCES ... DEPENDS ...): test-store, run by CTest
# away from the machine's display, zone, locale and settings.
function(pendra_test)
  cmake_parse_arguments(ARG "WIDGETS" "NAME;TIMEOUT" "SOURCES;DEPENDS" ${ARGN})
  add_executable(test-${ARG_NAME} ${ARG_SOURCES})
  target_link_libraries(test-${ARG_NAME} PRIVATE ${ARG_DEPENDS} pendra_test_support pendra_test_warnings)
  pendra_unoptimised(test-${ARG_NAME})
  if(ARG_WIDGETS)
    pendra_compile(test-${ARG_NAME} WIDGETS)
  else()
    target_precompile_headers(test-${ARG_NAME} REUSE_FROM pendra_test_support)
  endif()
  add_test(NAME ${ARG_NAME} COMMAND test-${ARG_NAME} --gtest_brief=1)
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  set_tests_properties(${ARG_NAME} PROPERTIES TIMEOUT ${ARG_TIMEOUT}
    ENVIRONMENT "PENDRA_ANALYTICS_ADDRESS=http://127.0.0.1:9/;QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;QT_LOGGING_RULES=")
endfunction()
