#!/usr/bin/env bash
# The Windows installer as a user runs it, under Wine (ctest's test "instalador" of the Windows
# build): CPack makes infofiscal-VERSION-win64.exe, which installs silently into a temporary
# folder; the demo month runs from the installed files alone (the catalog found beside the
# program, no variable naming one) and gives the expected fiscal files; without Firebird's client
# a Firebird database is refused with the message saying so; the uninstaller leaves nothing
# behind. Built with the dialog, the installed dialog also runs the demo month once under Qt's
# offscreen platform and gives the same files, its Start menu entry is there, and Qt's
# translation is found (nothing on stderr).
#   tests/windows/instalador.sh BUILD_FOLDER SOURCE_FOLDER [FONT_FOLDER]
# FONT_FOLDER, given when the build has the dialog: the fonts of Qt's offscreen platform.
set -euo pipefail
build="$1" fontes="$2" fontes_qt="${3:-}"
pasta="$(mktemp -d /tmp/infofiscal-instalador.XXXXXX)"
destino="$pasta/instalado"
# The Start menu's folder of all users, where an installation by an administrator puts its entries.
atalho="$(winepath -u 'C:\ProgramData\Microsoft\Windows\Start Menu\Programs\infofiscal\Exporta Informação Fiscal.lnk')"
export WINEDEBUG=-all
unset INFOFISCAL_CATALOGO

# The uninstaller copies itself away and returns before it has finished (the folder and the
# Start menu's entry go in either order).
desinstalar() {
  wine "$destino/Uninstall.exe" /S
  for _ in $(seq 100); do [ -e "$destino" ] || [ -e "$atalho" ] || break; sleep 0.1; done
}
# A failed run uninstalls too: left registered in Wine's prefix, the installation would make the
# next run's installer try to remove it first, and fail.
trap '[ ! -e "$destino/Uninstall.exe" ] || desinstalar; rm -rf "$pasta"' EXIT

(cd "$build" && cpack -G NSIS64 -B "$pasta/pacote" >/dev/null)
instalador="$(ls "$pasta"/pacote/infofiscal-*-win64.exe)"
# /D= must come last, unquoted: the folder as Windows names it.
wine "$instalador" /S "/D=$(winepath -w "$destino")"
instalados=(Uninstall.exe bin/infofiscal.exe share/infofiscal/providers.sql share/infofiscal/schema.sql
           share/infofiscal/demo.sql share/doc/infofiscal/README.md share/doc/infofiscal/docs/windows.md)
[ -z "$fontes_qt" ] || instalados+=(bin/infofiscal-dialogo.exe bin/qt.conf share/qt6/translations/qtbase_pt_BR.qm)
for f in "${instalados[@]}"; do
  [ -f "$destino/$f" ] || { echo "o instalador não instalou $f" >&2; exit 1; }
done
[ -z "$fontes_qt" ] || [ -f "$atalho" ] || { echo "o instalador não pôs a janela no menu Iniciar ($atalho)" >&2; exit 1; }

cat "$destino/share/infofiscal/schema.sql" "$destino/share/infofiscal/demo.sql" | sqlite3 -bail "$pasta/erp.sqlite"
for r in "1 demo_sintegra_marco_2024.txt" "2 demo_efd_marco_2024.txt"; do
  read -r registro esperado <<<"$r"
  base="$pasta/base-$registro"
  mkdir -p "$base/Arquivos/InfoFiscal"
  (cd "$pasta" && wine "$destino/bin/infofiscal.exe" exportar --fonte sqlite:erp.sqlite --registro "$registro" \
     --tipo "$registro" --base "base-$registro" --arquivo-fiscal "base-$registro/fiscal.txt" --progresso nada >/dev/null)
  cmp "$base/fiscal.txt" "$fontes/tests/data/expected/$esperado"
  [ -n "$fontes_qt" ] || continue
  # The dialog presses its generate button itself and ends (the options of bench/dialogo).
  mkdir -p "$base/janela/Arquivos/InfoFiscal"
  (cd "$pasta" && WINEQT_QPA_PLATFORM=offscreen WINEQT_QPA_FONTDIR="$(winepath -w "$fontes_qt")" \
     wine "$destino/bin/infofiscal-dialogo.exe" --fonte sqlite:erp.sqlite --registro "$registro" --tipo "$registro" \
     --base "base-$registro/janela" --executar "base-$registro/janela/fiscal.txt" --sair-em 0.1 2>"$pasta/janela.err")
  [ ! -s "$pasta/janela.err" ] || { echo "a janela escreveu:" >&2; cat "$pasta/janela.err" >&2; exit 1; }
  cmp "$base/janela/fiscal.txt" "$fontes/tests/data/expected/$esperado"
  cmp "$base/janela/Arquivos/InfoFiscal/SpedInformacao.txt" "$base/Arquivos/InfoFiscal/SpedInformacao.txt"
done

# Installed without Firebird's client (the tests' stand-in stays in the build folder): a Firebird
# database is refused with what to install, not with the crash of a missing DLL.
erro="$(cd "$pasta" && wine "$destino/bin/infofiscal.exe" exportar --fonte 'firebird:C:\erp.fdb' --registro 1 \
  --tipo 1 --base base-1 2>&1 >/dev/null)" && { echo "um banco Firebird abriu sem o cliente do Firebird" >&2; exit 1; }
esperado="Não foi possível abrir a fonte de dados 'firebird:C:\erp.fdb': o cliente do Firebird (fbclient.dll) não \
foi encontrado; instale o cliente do Firebird ou copie fbclient.dll para a pasta do programa"
[ "$erro" = "$esperado" ] || { printf 'sem o cliente do Firebird, em vez de\n%s\nveio\n%s\n' "$esperado" "$erro" >&2; exit 1; }

desinstalar
[ ! -e "$destino" ] || { echo "o desinstalador deixou: $(find "$destino")" >&2; exit 1; }
[ ! -e "$atalho" ] || { echo "o desinstalador deixou a entrada do menu Iniciar $atalho" >&2; exit 1; }
echo "instalado, o mês de demonstração rodou dos arquivos instalados, desinstalado"
