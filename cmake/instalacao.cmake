# What `cmake --install` puts where (GNUInstallDirs: PREFIX/bin, PREFIX/share/...):
#   bin/infofiscal, bin/infofiscal-dialogo              the programs
#   share/infofiscal/providers.sql                        the provider catalog, which the
#                                                         programs find from their own folder
#   share/infofiscal/schema.sql, demo.sql                 the reference ERP schema, the demo month
#   share/doc/infofiscal/                                 README.md and docs/
#   share/applications/infofiscal-dialogo.desktop,
#   share/icons/hicolor/scalable/apps/infofiscal.svg      the dialog's desktop entry and icon
install(TARGETS infofiscal RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
if(TARGET infofiscal-dialogo)
  install(TARGETS infofiscal-dialogo RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES ${CMAKE_SOURCE_DIR}/pacote/infofiscal-dialogo.desktop
          DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${CMAKE_SOURCE_DIR}/pacote/infofiscal.svg
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
endif()
install(FILES ${CMAKE_SOURCE_DIR}/db/providers.sql ${CMAKE_SOURCE_DIR}/db/schema.sql ${CMAKE_SOURCE_DIR}/db/demo.sql
        DESTINATION ${CMAKE_INSTALL_DATADIR}/infofiscal)
install(FILES ${CMAKE_SOURCE_DIR}/README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs)
