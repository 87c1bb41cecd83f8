# The interfaces of the automation objects: a header for their server and their clients, and the type libraries for clients of
# 64 and of 32 bits, which go into the executable. Included, not a subdirectory: CMake knows the outputs only beside the target that needs them.
find_program(WIDL widl REQUIRED)
set(weather_idl ${CMAKE_CURRENT_LIST_DIR}/weather.idl)
set(weather_header ${CMAKE_CURRENT_BINARY_DIR}/weather_idl.h)
set(weather_types ${CMAKE_CURRENT_BINARY_DIR}/weather.tlb)
set(weather_types_32 ${CMAKE_CURRENT_BINARY_DIR}/weather32.tlb)
set(widl ${WIDL} -I /usr/include/wine/wine/windows -L /usr/lib/x86_64-linux-gnu/wine/x86_64-windows)
add_custom_command(OUTPUT ${weather_header} ${weather_types} ${weather_types_32}
  COMMAND ${widl} -m64 -h -o ${weather_header} ${weather_idl}
  COMMAND ${widl} -m64 -t -o ${weather_types} ${weather_idl}
  COMMAND ${widl} -m32 -t -o ${weather_types_32} ${weather_idl}
  DEPENDS ${weather_idl} VERBATIM)
target_sources(orvalis_platform PRIVATE ${weather_header} ${weather_types} ${weather_types_32}
  ${CMAKE_CURRENT_LIST_DIR}/client_object.cpp
  ${CMAKE_CURRENT_LIST_DIR}/com_server.cpp
  ${CMAKE_CURRENT_LIST_DIR}/observation_object.cpp
  ${CMAKE_CURRENT_LIST_DIR}/weather_object.cpp
  ${CMAKE_CURRENT_LIST_DIR}/weather_registration.cpp
)
# No warnings for a generated header.
target_include_directories(orvalis_platform SYSTEM PUBLIC ${CMAKE_CURRENT_BINARY_DIR})
