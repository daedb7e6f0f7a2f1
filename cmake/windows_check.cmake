# What the preset windows checks beyond compiling the libraries. Nothing of it is run.

# No program is built without Qt, but every function that the libraries call has to be somewhere.
set(libraries)
foreach(folder base controls platform native image table files link app radio)
  list(APPEND libraries $<TARGET_FILE:memwright_${folder}>)
endforeach()
file(CONFIGURE OUTPUT linked.cpp CONTENT "int main() {}\n")
add_executable(memwright_linked "${CMAKE_CURRENT_BINARY_DIR}/linked.cpp")
target_link_libraries(memwright_linked PRIVATE -Wl,--whole-archive ${libraries} -Wl,--no-whole-archive)
add_dependencies(memwright_linked memwright_app memwright_radio)

# Debian has no Qt for Windows. Of Qt, what is said for each system in qt/serial needs declarations
# alone, and those are the same.
find_path(QT_HEADERS QtCore/qglobal.h REQUIRED NO_CMAKE_FIND_ROOT_PATH
          PATHS /usr/include/x86_64-linux-gnu/qt6 /usr/include/qt6)
add_library(memwright_qt_serial_compiled OBJECT
  qt/serial/port_facts.cpp
  qt/serial/port_handle.cpp
  qt/serial/port_lock.cpp
  qt/serial/qt_serial_devices.cpp)
target_link_libraries(memwright_qt_serial_compiled PRIVATE memwright_flags)
target_include_directories(memwright_qt_serial_compiled SYSTEM PRIVATE
  "${QT_HEADERS}" "${QT_HEADERS}/QtCore" "${QT_HEADERS}/QtSerialPort")
