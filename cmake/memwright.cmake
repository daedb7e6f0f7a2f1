# Everything that every target shares, and the one way to add a folder as a library.
include(GNUInstallDirs)

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")

# Where an installation keeps what the programs load. Not right in lib/memwright: a package of CPack
# would take it for a library of the system's there, and run ldconfig for it.
set(MEMWRIGHT_MODULES "memwright/modules")

if(CMAKE_CXX_FLAGS MATCHES "-fsanitize=")
  set(MEMWRIGHT_SANITIZED ON)
else()
  set(MEMWRIGHT_SANITIZED OFF)
endif()

add_library(memwright_flags INTERFACE)
target_compile_features(memwright_flags INTERFACE cxx_std_20)
target_include_directories(memwright_flags INTERFACE "${PROJECT_SOURCE_DIR}/src")
if(WIN32)
  # Of the system's macros, those for min, max and OpenPrinter would take our names.
  target_compile_definitions(memwright_flags INTERFACE NOMINMAX WIN32_LEAN_AND_MEAN)
endif()

# memwright_library(<folder> SOURCES <file>... [USES <library>...] [APART <file>...])
# adds the calling folder as the static library memwright_<folder>. Where sources are compiled eight at
# a time (CMAKE_UNITY_BUILD), those APART are not: they name something as another does, or may have to
# stay out of a program.
function(memwright_library folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;USES;APART")
  set_source_files_properties(${arg_APART} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  add_library(memwright_${folder} STATIC ${arg_SOURCES})
  target_link_libraries(memwright_${folder} PUBLIC memwright_flags ${arg_USES})
endfunction()

# memwright_module(<name> <source> <library>...)
# adds the module memwright-<name>, with "-" for "_", which lies beside the programs and is installed
# for them.
function(memwright_module name source)
  string(REPLACE "_" "-" file "memwright-${name}")
  add_library(memwright_${name} MODULE ${source})
  target_link_libraries(memwright_${name} PRIVATE ${ARGN})
  set_target_properties(memwright_${name} PROPERTIES PREFIX "" OUTPUT_NAME ${file}
                        LIBRARY_OUTPUT_DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
  install(TARGETS memwright_${name}
          LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}/${MEMWRIGHT_MODULES}")
endfunction()

# memwright_test_library(<name> SOURCES <file>... [USES <library>...])
# adds what several test programs are made of, compiled as they are.
function(memwright_test_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;USES")
  add_library(${name} STATIC ${arg_SOURCES})
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/tests")
  target_link_libraries(${name} PUBLIC memwright_flags ${arg_USES} PRIVATE memwright_test_flags)
  target_precompile_headers(${name} REUSE_FROM memwright_test_headers)
  if(MEMWRIGHT_UNITY_TESTS)
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON)
  endif()
endfunction()

# memwright_test(<name> SOURCES <file>... [USES <library>...] [HEADERS <header>...]
#                [PROPERTIES <ctest property>...] [PSEUDO_TERMINALS <suite>...] [LABEL <label>]
#                [APART <file>...])
# adds a GoogleTest program and hands its cases to CTest: each in a process of its own or, with
# MEMWRIGHT_CASES_TOGETHER, all in one. HEADERS are compiled once, with GoogleTest's own: worth it for
# a program of many sources. Cases count as two processors; those that mostly wait say PROCESSORS 1, so
# that more of them wait side by side, and COST, so that they begin early. The cases of the suites that
# open PSEUDO_TERMINALS get "_on_pseudo_terminal" after their label, which is "code" unless one is
# given (tools/cases.sh), and always a process each.
# With MEMWRIGHT_UNITY_TESTS, many sources are compiled as one, which instantiates GoogleTest's
# templates once for all of them; APART names those whose helpers are called as another's.
function(memwright_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "LABEL"
                        "SOURCES;USES;HEADERS;PROPERTIES;PSEUDO_TERMINALS;APART")
  add_executable(${name} ${arg_SOURCES})
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  target_link_libraries(${name} PRIVATE ${arg_USES} memwright_test_flags)
  if(arg_HEADERS)
    target_precompile_headers(${name} PRIVATE ${memwright_test_headers} ${arg_HEADERS})
  else()
    target_precompile_headers(${name} REUSE_FROM memwright_test_headers)
  endif()
  if(MEMWRIGHT_UNITY_TESTS)
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON)
  endif()
  set_target_properties(${name} PROPERTIES UNITY_BUILD_BATCH_SIZE 24)
  set_source_files_properties(${arg_APART} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)

  if(NOT arg_LABEL)
    set(arg_LABEL code)
  endif()
  set(properties PROCESSORS 2 ${arg_PROPERTIES})
  list(TRANSFORM arg_PSEUDO_TERMINALS REPLACE "(.+)" "\\1.*:*/\\1.*")
  list(JOIN arg_PSEUDO_TERMINALS ":" on_terminals)
  if(on_terminals)
    memwright_discover_cases(${name} "${on_terminals}" "${name}_on_terminals" TIMEOUT 300 ${properties}
                             LABELS "${arg_LABEL}_on_pseudo_terminal")
    set(others "-${on_terminals}")
  else()
    set(others "*")
  endif()
  if(MEMWRIGHT_CASES_TOGETHER)
    add_test(NAME ${name} COMMAND ${name} "--gtest_filter=${others}")
    set_tests_properties(${name} PROPERTIES TIMEOUT 600 COST 60 ${properties} LABELS "${arg_LABEL}")
  else()
    memwright_discover_cases(${name} "${others}" "${name}_cases" TIMEOUT 300 ${properties}
                             LABELS "${arg_LABEL}")
  endif()
endfunction()

# Hands the cases of a GoogleTest program that a filter lets through to CTest, one by one, with the
# properties that follow.
function(memwright_discover_cases name filter list)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 DISCOVERY_MODE PRE_TEST TEST_FILTER "${filter}"
                       TEST_LIST ${list} PROPERTIES ${ARGN})
endfunction()
