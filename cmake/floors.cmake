# The floor plan. A floor is a folder of libsrc; it may include the floors listed before it, none
# after it (scripts/check-floors holds the same list through this file). Each floor is an object library;
# the shared library is all of them.
set(TZ_FLOORS
    host/runtime
    host/text
    host/json
    host/xml
    host/log
    host/net
    host/store
    host/diff
    host/python
    tzparser/text
    tzparser/variable
    tzparser/regex
    tzparser/pattern
    tzparser/rule
    tzparser/keyword
    tzparser/select
    tzparser/table
    tzparser/paragraph
    tzparser/python
    tzparser/script
    tzparser/value
    tzparser/identify
    tzparser/engine
    tzparser/check
    tzparser/explain
    tzparser/convert)

# tz_floor(NAME SOURCES... ) makes the object library of one floor, called from the folder's own list.
function(tz_floor name)
    string(REPLACE "/" "_" target "floor_${name}")
    list(TRANSFORM ARGN PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
    add_library(${target} OBJECT ${ARGN})
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/libsrc)
    target_compile_definitions(${target} PRIVATE TZPARSER_BUILD)
    target_link_libraries(${target} PRIVATE tz_options PUBLIC tz_libraries)
endfunction()

# tz_floor_objects(OUT FLOOR) gives the objects of a floor and of all below it, for tests of internals.
function(tz_floor_objects out floor)
    set(objects "")
    foreach(name IN LISTS TZ_FLOORS)
        string(REPLACE "/" "_" target "floor_${name}")
        if(TARGET ${target})
            list(APPEND objects $<TARGET_OBJECTS:${target}>)
        endif()
        if(name STREQUAL floor)
            break()
        endif()
    endforeach()
    set(${out} ${objects} PARENT_SCOPE)
endfunction()
