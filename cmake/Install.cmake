# Installing, and the Debian package made of what is installed.
if(NOT TARGET brindlecam)
  return()
endif()

install(TARGETS brindlecam_launcher RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS brindlecam brindlecam_fetch RUNTIME DESTINATION ${BRINDLECAM_PROGRAM_FOLDER})
# A module of the program's own: the same folder on every system.
install(TARGETS brindlecam_ocr LIBRARY DESTINATION ${BRINDLECAM_MODULE_FOLDER})
install(FILES resources/io.halvick.Brindlecam.desktop
  DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES resources/io.halvick.Brindlecam.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright)
install(FILES CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME brindlecam)
set(CPACK_PACKAGE_VENDOR "The Brindlecam authors")
set(CPACK_PACKAGE_CONTACT "The Brindlecam authors <paquetes@${BRINDLECAM_WEB_HOST}>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
# The libraries are found in the program; what it loads or shows at run time is named here.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
  "fonts-inter, fonts-noto-color-emoji, qt6-translations-l10n, qt6-image-formats-plugins, \
tesseract-ocr-spa, tesseract-ocr-eng, xdg-utils, ca-certificates")
include(CPack)
