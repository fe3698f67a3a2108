# What every target of the project is compiled with.
add_library(zorvel_options INTERFACE)
target_compile_options(zorvel_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
# GCC 12 sees overlapping copies in `"text" + std::string` where there are none (GCC bug 105651).
target_compile_options(zorvel_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
target_include_directories(zorvel_options INTERFACE ${PROJECT_SOURCE_DIR}/src)

if(ZORVEL_SANITIZE)
  target_compile_options(zorvel_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(zorvel_options INTERFACE -fsanitize=address,undefined)
endif()
if(ZORVEL_FUZZ)
  target_compile_options(zorvel_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# zorvel_room(NAME SOURCES ... DEPENDS ...): one folder of src/ as a static library.
function(zorvel_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;DEPENDS;PRIVATE" ${ARGN})
  add_library(zorvel_${name} STATIC ${ROOM_SOURCES})
  target_link_libraries(zorvel_${name} PUBLIC zorvel_options ${ROOM_DEPENDS} PRIVATE ${ROOM_PRIVATE})
endfunction()
