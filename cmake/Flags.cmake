# redfishconfig_flags: what every target of the project is compiled with.

add_library(redfishconfig_flags INTERFACE)
target_compile_options(redfishconfig_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
    -Wold-style-cast
    # file names in log lines start at the source tree, not at the folder of whoever built it
    -fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=)
# headers of the folder common/ are spelled "common/X.h" everywhere
target_include_directories(redfishconfig_flags INTERFACE ${PROJECT_SOURCE_DIR})
if(REDFISHCONFIG_WARNINGS_AS_ERRORS)
    target_compile_options(redfishconfig_flags INTERFACE -Werror)
endif()
if(REDFISHCONFIG_SANITIZE)
    target_compile_options(redfishconfig_flags INTERFACE
        -fsanitize=${REDFISHCONFIG_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
        # the instrumented code makes GCC see uninitialised members in the standard library
        -Wno-maybe-uninitialized)
    target_link_options(redfishconfig_flags INTERFACE -fsanitize=${REDFISHCONFIG_SANITIZE})
endif()
if(REDFISHCONFIG_COVERAGE)
    target_compile_options(redfishconfig_flags INTERFACE --coverage -fprofile-abs-path)
    target_link_options(redfishconfig_flags INTERFACE --coverage)
endif()
