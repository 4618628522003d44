# The libraries that orvex is built with: sets frontend_lacks to the names of those that are not found.
# scripts/setup includes this file, too, so that what satisfies it also satisfies the build.

find_package(CLI11 QUIET)
find_package(nlohmann_json 3.9 QUIET)

set(frontend_lacks "")
foreach(library CLI11 nlohmann_json)
    if(NOT ${library}_FOUND)
        list(APPEND frontend_lacks ${library})
    endif()
endforeach()
