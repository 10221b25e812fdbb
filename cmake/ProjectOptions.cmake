# What every target of this project is compiled with.
add_library(project_options INTERFACE)
target_compile_features(project_options INTERFACE cxx_std_20)
target_include_directories(project_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_definitions(project_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
    TALLYROOM_VERSION_MAJOR=${PROJECT_VERSION_MAJOR}
    TALLYROOM_VERSION_MINOR=${PROJECT_VERSION_MINOR}
    TALLYROOM_VERSION_PATCH=${PROJECT_VERSION_PATCH})
target_compile_options(project_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wconversion
    -Wno-sign-conversion -fvisibility=hidden -fvisibility-inlines-hidden
    $<$<BOOL:${TALLYROOM_WARNINGS_AS_ERRORS}>:-Werror>)
if(TALLYROOM_SANITIZE)
    target_compile_options(project_options INTERFACE
        -fsanitize=${TALLYROOM_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(project_options INTERFACE -fsanitize=${TALLYROOM_SANITIZE})
endif()
# What is installed meets texts from anywhere: an overflow ends it instead of being used.
if(TALLYROOM_HARDENED)
    include(CheckPIESupported)
    check_pie_supported()
    string(REGEX MATCH "x86_64|aarch64" processor "${CMAKE_SYSTEM_PROCESSOR}")
    set(branch_protection_x86_64 -fcf-protection)
    set(branch_protection_aarch64 -mbranch-protection=standard)
    target_compile_options(project_options INTERFACE
        -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fstack-protector-strong -fstack-clash-protection
        ${branch_protection_${processor}} -Werror=format-security
        -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
    target_link_options(project_options INTERFACE -Wl,-z,relro,-z,now)
endif()

# tallyroom_library(NAME [QOBJECTS] SOURCES... LINKS targets...): a static library under the project's
# options. QOBJECTS: it holds classes with signals or windows drawn in .ui files.
function(tallyroom_library name)
    cmake_parse_arguments(ARG "QOBJECTS" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ${ARG_QOBJECTS} AUTOUIC ${ARG_QOBJECTS})
    target_link_libraries(${name} PUBLIC project_options ${ARG_LINKS})
endfunction()
