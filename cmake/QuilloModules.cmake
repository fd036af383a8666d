# A folder under src/ is a target quillo_<folder>; who may depend on whom is said once, in the folder's own
# CMakeLists.txt, and drawn in docs/architecture.md (a test compares the two).

# quillo_core_module(<folder> [DEPENDS <folder>...] [LIBRARIES <library>...])
#
# Makes the core module of the current folder from its sources and those in folders below it; a main.cpp is left to its
# program.
# A core module knows nothing of Qt: naming a Qt library, or a module that is not a core module, stops the configuration.
function(quillo_core_module name)
  cmake_parse_arguments(ARG "" "" "DEPENDS;LIBRARIES" ${ARGN})
  foreach(library IN LISTS ARG_LIBRARIES)
    if(library MATCHES "^(Qt|KF)[0-9]*(::|$)")
      message(FATAL_ERROR "src/${name} is a core module and may not use ${library}")
    endif()
  endforeach()
  set(dependencies "")
  foreach(dependency IN LISTS ARG_DEPENDS)
    if(NOT TARGET quillo_${dependency})
      message(FATAL_ERROR "src/${name} depends on '${dependency}', which is no module made before it")
    endif()
    get_target_property(is_core quillo_${dependency} QUILLO_CORE_MODULE)
    if(NOT is_core)
      message(FATAL_ERROR "src/${name} is a core module and may not depend on src/${dependency}, which is none")
    endif()
    list(APPEND dependencies quillo_${dependency})
  endforeach()

  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  if(sources)
    add_library(quillo_${name} STATIC ${sources})
    # The windows are a library that is loaded when they are wanted.
    set_target_properties(quillo_${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
    target_include_directories(quillo_${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(quillo_${name} PUBLIC ${dependencies} PRIVATE ${ARG_LIBRARIES} quillo_flags)
    quillo_checked(quillo_${name})
  else()
    add_library(quillo_${name} INTERFACE)
    target_include_directories(quillo_${name} INTERFACE "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(quillo_${name} INTERFACE ${dependencies} ${ARG_LIBRARIES})
  endif()
  set_target_properties(quillo_${name} PROPERTIES QUILLO_CORE_MODULE TRUE)
endfunction()

# quillo_desktop_module(<folder> [DEPENDS <folder>...] [LIBRARIES <library>...])
#
# The same for a folder of the desktop program, which may use Qt and core modules.
function(quillo_desktop_module name)
  cmake_parse_arguments(ARG "" "" "DEPENDS;LIBRARIES" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  list(TRANSFORM ARG_DEPENDS PREPEND quillo_)
  add_library(quillo_${name} STATIC ${sources})
  # moc 6.4 cannot read the <concepts> of GCC 12 where no other header comes before it, and needs nothing of it: its
  # guard leaves it out.
  set_target_properties(quillo_${name} PROPERTIES AUTOMOC ON AUTOMOC_MOC_OPTIONS "-D_GLIBCXX_CONCEPTS")
  # What Qt generates is not ours to tidy: one check that finds nothing, as none at all would be an error.
  file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/.clang-tidy" "Checks: '-*,misc-definitions-in-headers'\n")
  target_include_directories(quillo_${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_compile_definitions(quillo_${name} PUBLIC QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY)
  target_link_libraries(quillo_${name} PUBLIC ${ARG_DEPENDS} ${ARG_LIBRARIES} PRIVATE quillo_flags)
  quillo_checked(quillo_${name})
endfunction()

# quillo_library_on_demand(<folder>)
#
# Makes `quillo-<folder>.so` of a core module and the main.cpp beside it: a library that programs load when they need it
# (base/LoadedLibrary.h). Nothing of it is to be seen but what they look for.
function(quillo_library_on_demand name)
  add_library(quillo-${name} MODULE main.cpp)
  target_link_libraries(quillo-${name} PRIVATE quillo_${name} quillo_flags)
  target_link_options(quillo-${name} PRIVATE LINKER:--as-needed LINKER:--exclude-libs,ALL)
  set_target_properties(quillo-${name} PROPERTIES PREFIX "")
  quillo_checked(quillo-${name})
  install(TARGETS quillo-${name} LIBRARY DESTINATION "${CMAKE_INSTALL_LIBEXECDIR}/quillo")
endfunction()

# quillo_loads(<program> <folder>...): where it is built, the program finds these libraries beside itself.
function(quillo_loads program)
  foreach(name IN LISTS ARGN)
    add_custom_command(TARGET ${program} POST_BUILD VERBATIM
      COMMAND "${CMAKE_COMMAND}" -E create_symlink "$<TARGET_FILE:quillo-${name}>"
        "$<TARGET_FILE_DIR:${program}>/$<TARGET_FILE_NAME:quillo-${name}>")
    add_dependencies(${program} quillo-${name})
  endforeach()
endfunction()

# quillo_checked(<target>): clang-tidy runs beside the compiler for it, where that is switched on.
function(quillo_checked target)
  if(QUILLO_CLANG_TIDY)
    set_target_properties(${target} PROPERTIES CXX_CLANG_TIDY "${QUILLO_CLANG_TIDY_PROGRAM};--quiet")
  endif()
endfunction()

# quillo_core_test(<folder> [LIBRARIES <library>...])
#
# Makes the test program of one core module from the current folder. It links that module and nothing else of ours, so
# that an arrow which the module does not declare fails here, at link time.
function(quillo_core_test name)
  cmake_parse_arguments(ARG "" "" "LIBRARIES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  add_executable(test_${name} ${sources})
  target_include_directories(test_${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  target_compile_definitions(test_${name} PRIVATE QUILLO_TESTS_FOLDER="${PROJECT_SOURCE_DIR}/tests")
  target_link_libraries(test_${name} PRIVATE quillo_${name} GTest::gmock_main ${ARG_LIBRARIES} quillo_flags)
  if(QUILLO_SANITIZE)
    # One process for all of them: with sanitizers, starting takes longer than most tests.
    add_test(NAME ${name}.all COMMAND test_${name})
    set_tests_properties(${name}.all PROPERTIES TIMEOUT 600)
  else()
    gtest_discover_tests(test_${name} TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
  endif()
endfunction()
