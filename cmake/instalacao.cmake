# What `cmake --install` puts where (GNUInstallDirs: PREFIX/bin, PREFIX/share/...):
#   bin/infofiscal, bin/infofiscal-dialogo              the programs
#   share/infofiscal/providers.sql                        the provider catalog, which the
#                                                         programs find from their own folder
#   share/infofiscal/schema.sql, demo.sql                 the reference ERP schema, the demo month
#   share/doc/infofiscal/                                 README.md and docs/
#   share/applications/infofiscal-dialogo.desktop,
#   share/icons/hicolor/scalable/apps/infofiscal.svg      the dialog's desktop entry and icon (Linux)
#   bin/qt.conf, share/qt6/translations/qtbase_pt_BR.qm   Qt's translation and where it is (Windows)
install(TARGETS infofiscal RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
if(TARGET infofiscal-dialogo)
  install(TARGETS infofiscal-dialogo RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
if(TARGET infofiscal-dialogo AND WIN32)
  # Qt is linked into the program; its Portuguese translation (Debian's qt6-translations-l10n,
  # the same file on both systems) goes into share\qt6\translations, which qt.conf beside the
  # program names. The Start menu's entry is the installer's (cmake/pacote.cmake).
  find_file(QT_TRADUCAO qtbase_pt_BR.qm PATHS /usr/share/qt6/translations NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  install(FILES ${CMAKE_SOURCE_DIR}/pacote/qt.conf DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES ${QT_TRADUCAO} DESTINATION ${CMAKE_INSTALL_DATADIR}/qt6/translations)
elseif(TARGET infofiscal-dialogo)
  install(FILES ${CMAKE_SOURCE_DIR}/pacote/infofiscal-dialogo.desktop
          DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${CMAKE_SOURCE_DIR}/pacote/infofiscal.svg
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
endif()
install(FILES ${CMAKE_SOURCE_DIR}/db/providers.sql ${CMAKE_SOURCE_DIR}/db/schema.sql ${CMAKE_SOURCE_DIR}/db/demo.sql
        DESTINATION ${CMAKE_INSTALL_DATADIR}/infofiscal)
install(FILES ${CMAKE_SOURCE_DIR}/README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs)
