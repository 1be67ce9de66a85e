#!/usr/bin/env bash
# The Windows installer as a user runs it, under Wine (ctest's test "instalador" of the Windows
# build): CPack makes infofiscal-VERSION-win64.exe, which installs silently into a temporary
# folder; the demo month runs from the installed files alone (the catalog found beside the
# program, no variable naming one) and gives the expected fiscal files; without Firebird's client
# a Firebird database is refused with the message saying so; the uninstaller leaves nothing
# behind.
#   tests/windows/instalador.sh BUILD_FOLDER SOURCE_FOLDER
set -euo pipefail
build="$1" fontes="$2"
pasta="$(mktemp -d /tmp/infofiscal-instalador.XXXXXX)"
trap 'rm -rf "$pasta"' EXIT
export WINEDEBUG=-all
unset INFOFISCAL_CATALOGO

(cd "$build" && cpack -G NSIS64 -B "$pasta/pacote" >/dev/null)
instalador="$(ls "$pasta"/pacote/infofiscal-*-win64.exe)"
destino="$pasta/instalado"
# /D= must come last, unquoted: the folder as Windows names it.
wine "$instalador" /S "/D=$(winepath -w "$destino")"
for f in Uninstall.exe bin/infofiscal.exe share/infofiscal/providers.sql share/infofiscal/schema.sql \
         share/infofiscal/demo.sql share/doc/infofiscal/README.md share/doc/infofiscal/docs/windows.md; do
  [ -f "$destino/$f" ] || { echo "o instalador não instalou $f" >&2; exit 1; }
done

cat "$destino/share/infofiscal/schema.sql" "$destino/share/infofiscal/demo.sql" | sqlite3 -bail "$pasta/erp.sqlite"
for r in "1 demo_sintegra_marco_2024.txt" "2 demo_efd_marco_2024.txt"; do
  read -r registro esperado <<<"$r"
  base="$pasta/base-$registro"
  mkdir -p "$base/Arquivos/InfoFiscal"
  (cd "$pasta" && wine "$destino/bin/infofiscal.exe" exportar --fonte sqlite:erp.sqlite --registro "$registro" \
     --tipo "$registro" --base "base-$registro" --arquivo-fiscal "base-$registro/fiscal.txt" --progresso nada >/dev/null)
  cmp "$base/fiscal.txt" "$fontes/tests/data/expected/$esperado"
done

# Installed without Firebird's client (the tests' stand-in stays in the build folder): a Firebird
# database is refused with what to install, not with the crash of a missing DLL.
erro="$(cd "$pasta" && wine "$destino/bin/infofiscal.exe" exportar --fonte 'firebird:C:\erp.fdb' --registro 1 \
  --tipo 1 --base base-1 2>&1 >/dev/null)" && { echo "um banco Firebird abriu sem o cliente do Firebird" >&2; exit 1; }
esperado="Não foi possível abrir a fonte de dados 'firebird:C:\erp.fdb': o cliente do Firebird (fbclient.dll) não \
foi encontrado; instale o cliente do Firebird ou copie fbclient.dll para a pasta do programa"
[ "$erro" = "$esperado" ] || { printf 'sem o cliente do Firebird, em vez de\n%s\nveio\n%s\n' "$esperado" "$erro" >&2; exit 1; }

# The uninstaller copies itself away and returns before it has finished.
wine "$destino/Uninstall.exe" /S
for _ in $(seq 100); do [ -e "$destino" ] || break; sleep 0.1; done
[ ! -e "$destino" ] || { echo "o desinstalador deixou: $(find "$destino")" >&2; exit 1; }
echo "instalado, o mês de demonstração rodou dos arquivos instalados, desinstalado"
