# A room is one folder of src/ and one static library: platform/x11 is brindlecam_platform_x11. It
# includes only rooms below it; the rule itself is tested by tests/rules. What it USES is known to
# whoever uses the room, as far as libraries go; headers are told apart by the rule.
function(brindlecam_room room)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
  string(REPLACE "/" "_" name ${room})
  add_library(brindlecam_${name} STATIC ${ARG_SOURCES})
  target_include_directories(brindlecam_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(brindlecam_${name} PUBLIC ${ARG_USES} PRIVATE brindlecam_options)
endfunction()
