# The warnings under which every target is compiled, by compiler. They are errors where
# CMAKE_COMPILE_WARNING_AS_ERROR is on: in the presets of those who develop, and in ./test; never for
# who only builds the programs, perhaps with a newer compiler that warns of more.
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
                      -Wnon-virtual-dtor -Woverloaded-virtual)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 finds overlaps in its own std::string that are none.
  add_compile_options(-Wno-restrict)
endif()
if(CMAKE_UNITY_BUILD)
  # What one source names is not hidden by the next, which is compiled together with it by chance.
  add_compile_options(-Wno-shadow)
endif()
