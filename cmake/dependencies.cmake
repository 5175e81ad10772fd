# What the library stands on. docs/dependencies.md says why for each.
set(Boost_NO_WARN_NEW_VERSIONS ON)
find_package(Python3 3.7 REQUIRED COMPONENTS Interpreter Development)
set(boost_python python${Python3_VERSION_MAJOR}${Python3_VERSION_MINOR})
find_package(Boost 1.74 REQUIRED COMPONENTS regex ${boost_python})
find_package(RapidJSON REQUIRED)
find_package(pugixml REQUIRED)
find_package(msgpack REQUIRED CONFIG)
find_package(SQLite3 3.37 REQUIRED)
find_package(Threads REQUIRED)
find_path(XXHASH_INCLUDE_DIR xxhash.h REQUIRED)
find_library(XXHASH_LIBRARY xxhash REQUIRED)
find_path(PCRE2_INCLUDE_DIR pcre2.h REQUIRED)
find_library(PCRE2_LIBRARY pcre2-8 REQUIRED)

add_library(tz_libraries INTERFACE)
target_link_libraries(tz_libraries INTERFACE Boost::regex Boost::${boost_python} Python3::Python pugixml::pugixml
    msgpackc-cxx SQLite::SQLite3 ${XXHASH_LIBRARY} ${PCRE2_LIBRARY} Threads::Threads)
target_include_directories(tz_libraries SYSTEM INTERFACE ${RAPIDJSON_INCLUDE_DIRS} ${XXHASH_INCLUDE_DIR} ${PCRE2_INCLUDE_DIR})
