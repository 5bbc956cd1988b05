# Where things are installed. A command starts the launcher; that finds the program, and the program
# its module, from where they lie themselves, so that the tree may be moved.
include(GNUInstallDirs)
foreach(folder ${CMAKE_INSTALL_BINDIR} ${CMAKE_INSTALL_LIBEXECDIR})
  if(IS_ABSOLUTE ${folder})
    message(FATAL_ERROR "${folder}: folders are named from the prefix on")
  endif()
endforeach()
set(BRINDLECAM_PROGRAM_FOLDER ${CMAKE_INSTALL_LIBEXECDIR}/brindlecam)
set(BRINDLECAM_MODULE_FOLDER lib/brindlecam)
file(RELATIVE_PATH BRINDLECAM_PROGRAM_FROM_LAUNCHER
  /${CMAKE_INSTALL_BINDIR} /${BRINDLECAM_PROGRAM_FOLDER}/brindlecam)
file(RELATIVE_PATH BRINDLECAM_MODULE_FROM_PROGRAM
  /${BRINDLECAM_PROGRAM_FOLDER} /${BRINDLECAM_MODULE_FOLDER})
