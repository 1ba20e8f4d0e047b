# sonalyx_add_test(NAME SOURCES ... LIBS ... [GUI])
# One GoogleTest program; each test case becomes a CTest test. GUI tests get a main that
# starts a QApplication under the offscreen platform, so they need no display.
function(sonalyx_add_test name)
  cmake_parse_arguments(ARG "GUI" "TIMEOUT" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  # Widget tests bring up a QApplication in their main; the others use GoogleTest's own.
  if(ARG_GUI)
    target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gmock sonalyx_gui_test_main)
  else()
    target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gmock GTest::gtest_main)
  endif()
  target_compile_definitions(${name} PRIVATE
    SONALYX_TEST_DATA_DIR="${SONALYX_TEST_DATA_DIR}"
    SONALYX_SAMPLES_DIR="${SONALYX_SAMPLES_DIR}"
    SONALYX_BINARY_DIR="${CMAKE_BINARY_DIR}")
  # Every test runs without a display; the GUI tests' own mains also choose offscreen, since
  # test discovery starts the programs without this environment.
  set(env "QT_QPA_PLATFORM=offscreen")
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  # Listing the tests starts the program; under Wine (the Windows build) that alone can take
  # longer than GoogleTest's default of five seconds.
  gtest_discover_tests(${name}
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    NO_PRETTY_VALUES
    PROPERTIES ENVIRONMENT "${env}" TIMEOUT ${ARG_TIMEOUT})
endfunction()
