# One place for what every one of our own targets is compiled with.
add_library(brindlecam_options INTERFACE)
target_compile_options(brindlecam_options INTERFACE
  -Wall -Wextra -Werror $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wshadow=local> -Wundef
  $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual> $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>
  $<$<COMPILE_LANGUAGE:CXX>:-Wsuggest-override>)
target_compile_definitions(brindlecam_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
  QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(BRINDLECAM_SANITIZE)
  target_compile_options(brindlecam_options INTERFACE
    -fsanitize=${BRINDLECAM_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(brindlecam_options INTERFACE -fsanitize=${BRINDLECAM_SANITIZE})
endif()
# Copies in line go unseen by the sanitizer; calls of these it replaces with its own.
if(BRINDLECAM_SANITIZE STREQUAL "thread")
  target_compile_options(brindlecam_options INTERFACE
    -fno-builtin-memcpy -fno-builtin-memmove -fno-builtin-memset)
endif()
