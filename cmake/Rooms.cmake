# A room is one folder of src/ and one static library. It includes only rooms below it; the rule
# itself is tested by tests/rules.
function(brindlecam_room room)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
  add_library(brindlecam_${room} STATIC ${ARG_SOURCES})
  target_include_directories(brindlecam_${room} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(brindlecam_${room} PUBLIC ${ARG_USES} PRIVATE brindlecam_options)
endfunction()
