# The package of `cmake --install`'s files, made by CPack: the Debian package (scripts/pacote:
# cpack -G DEB) and, built for Windows, its installer (scripts/windows: cpack -G NSIS64). The
# Debian package takes its library dependencies from the programs themselves (dpkg-shlibdeps,
# from dpkg-dev) and names what they load at run time, Qt's platform plugins and its
# Portuguese translation, and sqlite3, with which the demo month (and a company's own SQLite
# file) is loaded. The Windows programs are self-contained (linked statically) but for the
# Firebird client, which the user's Firebird installation brings.
set(CPACK_PACKAGE_NAME infofiscal)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "infofiscal")
set(CPACK_PACKAGE_CONTACT "Equipe do infofiscal <suporte@infofiscal.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "arquivo de informações fiscais, SINTEGRA e SPED EFD ICMS/IPI a partir do ERP")
set(CPACK_PACKAGE_DESCRIPTION
    "Gera, do mês de uma empresa no banco de dados do ERP (SQLite, PostgreSQL ou Firebird), o
arquivo de informações fiscais SpedInformacao.txt e, dele, o arquivo SINTEGRA ou o
SPED EFD ICMS/IPI, conferidos antes de gravados. Traz o comando infofiscal, a janela
infofiscal-dialogo, o catálogo de provedores, o esquema de referência e um mês de
demonstração.")
set(CPACK_STRIP_FILES ON)

if(WIN32)
  # infofiscal-VERSION-win64.exe, installing into Program Files\infofiscal the tree of `cmake
  # --install`: bin\infofiscal.exe (and, built with the dialog, bin\infofiscal-dialogo.exe),
  # share\infofiscal (the catalog the program finds from its own folder, the schema, the demo
  # month) and share\doc\infofiscal; with an uninstaller.
  set(CPACK_PACKAGE_FILE_NAME infofiscal-${PROJECT_VERSION}-win64)
  set(CPACK_PACKAGE_INSTALL_DIRECTORY infofiscal)
  set(CPACK_NSIS_PACKAGE_NAME infofiscal)
  set(CPACK_NSIS_DISPLAY_NAME "infofiscal ${PROJECT_VERSION}")
  set(CPACK_NSIS_INSTALL_ROOT "$PROGRAMFILES64")
  set(CPACK_NSIS_ENABLE_UNINSTALL_BEFORE_INSTALL ON)
  # NSIS's default stub is 32-bit, which would need Wine's 32-bit half: a 64-bit, Unicode one.
  set(CPACK_NSIS_DEFINES "Target amd64-unicode")
  if(TARGET infofiscal-dialogo)
    # The dialog in the Start menu, in the folder infofiscal, with the uninstaller's entry.
    set(CPACK_PACKAGE_EXECUTABLES infofiscal-dialogo "Exporta Informação Fiscal")
  endif()
  include(CPack)
  return()
endif()

set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, qt6-translations-l10n, sqlite3")
# The Firebird engine opens a database file without a server (firebird:/path/ERP.FDB).
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "firebird3.0-server-core")

include(CPack)
