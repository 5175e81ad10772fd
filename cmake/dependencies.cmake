# What the library stands on. docs/dependencies.md says why for each.
set(Boost_NO_WARN_NEW_VERSIONS ON)
find_package(Boost 1.74 REQUIRED COMPONENTS regex)
find_package(RapidJSON REQUIRED)
find_package(pugixml REQUIRED)
find_package(Threads REQUIRED)

add_library(tz_libraries INTERFACE)
target_link_libraries(tz_libraries INTERFACE Boost::regex pugixml::pugixml Threads::Threads)
target_include_directories(tz_libraries SYSTEM INTERFACE ${RAPIDJSON_INCLUDE_DIRS})

if(TZ_SANITIZE MATCHES "thread")
    add_library(regex_blocks OBJECT cmake/regexblocks.cpp)
    target_link_libraries(regex_blocks PRIVATE tz_options tz_libraries)
endif()
