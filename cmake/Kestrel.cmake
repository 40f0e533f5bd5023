# Shared helpers for the library, executable and test targets.

set(KESTREL_QT_PCH_HEADERS
  <QtCore/QtCore>
  <QtGui/QtGui>
  <QtWidgets/QtWidgets>
  <QtSql/QtSql>)

# kestrel_library(<name> SOURCES ... [LIBS ...])
# One shared library per subsystem; headers are reached as "<folder>/<file>.h" from the source root.
function(kestrel_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_library(${name} SHARED ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/libs)
  target_link_libraries(${name} PUBLIC ${ARG_LIBS})
  target_precompile_headers(${name} PRIVATE ${KESTREL_QT_PCH_HEADERS})
  set_target_properties(${name} PROPERTIES OUTPUT_NAME kestrel_${name})
endfunction()

# kestrel_test_support(<name> SOURCES ... [LIBS ...] [DEFINITIONS ...])
# Helpers that several tests share, compiled once; the definitions reach the tests that link it.
function(kestrel_test_support name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS;DEFINITIONS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC testsupport ${ARG_LIBS})
  target_precompile_headers(${name} REUSE_FROM testsupport)
  target_compile_definitions(${name} PUBLIC ${ARG_DEFINITIONS})
endfunction()

# kestrel_test(<name> SOURCES ... [LIBS ...])
# One QtTest executable; runs offscreen with its own XDG folders so that no test sees real settings.
function(kestrel_test name)
  cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE testsupport ${ARG_LIBS}
    Qt6::Core Qt6::Gui Qt6::Widgets Qt6::Sql Qt6::Xml Qt6::Test)
  target_precompile_headers(${name} REUSE_FROM testsupport)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  add_test(NAME ${name} COMMAND ${name})
  set(home ${CMAKE_BINARY_DIR}/testhome/${name})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 300)
  endif()
  set_tests_properties(${name} PROPERTIES
    TIMEOUT ${ARG_TIMEOUT}
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;KESTREL_NONINTERACTIVE=1;XDG_CONFIG_HOME=${home}/config;XDG_DATA_HOME=${home}/data;XDG_CACHE_HOME=${home}/cache;KESTREL_BIN_DIR=${CMAKE_BINARY_DIR}/bin;KESTREL_SOURCE_DIR=${PROJECT_SOURCE_DIR}")
endfunction()
