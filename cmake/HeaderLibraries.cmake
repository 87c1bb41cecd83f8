# Boost (its HTTP parser) and nlohmann-json: libraries of headers alone, the same for every system, from Debian's
# packages. The target orvalis_headers gives just these two folders, by links in the build folder: cross-building for
# Windows, /usr/include must not be on the include path.
find_path(BOOST_HEADERS boost/beast/http/parser.hpp REQUIRED PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH)
find_path(NLOHMANN_HEADERS nlohmann/json.hpp REQUIRED PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH)
set(linked ${CMAKE_BINARY_DIR}/headers)
file(MAKE_DIRECTORY ${linked})
file(CREATE_LINK ${BOOST_HEADERS}/boost ${linked}/boost SYMBOLIC)
file(CREATE_LINK ${NLOHMANN_HEADERS}/nlohmann ${linked}/nlohmann SYMBOLIC)

add_library(orvalis_headers INTERFACE)
target_include_directories(orvalis_headers SYSTEM INTERFACE ${linked})
