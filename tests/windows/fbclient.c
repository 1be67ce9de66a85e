/* A stand-in for Firebird's fbclient.dll, for the tests of the Windows build under Wine only.
 *
 * Wine has no Firebird client, and the official one needs a Windows Firebird installation.
 * This DLL is a winelib library (built with winegcc): Windows programs call it as they would
 * call fbclient.dll, and it forwards each call to the Linux client, libfbclient.so.2, which opens
 * the test databases with its embedded engine as the Linux tests do. It is put beside the test
 * programs in the build folder, never into the installer.
 *
 * What the two systems lay out alike passes through as it is: handles, status vectors, XSQLDA,
 * ISC_QUAD, the date and time types (all of fixed size on 64-bit Windows and Linux). What
 * differs is translated:
 *   - the calling convention: the exported functions are Windows' (WINAPI), the library's the
 *     System V one; the compiler converts at each call;
 *   - a database named by a Windows path (C:\...) is handed to Linux by its Unix path;
 *   - struct tm, which glibc makes longer than Windows' (tm_gmtoff, tm_zone): the fields both
 *     have are copied, so that the Linux client never writes past the caller's structure;
 *   - the variable arguments of isc_start_transaction, read in Windows' convention and passed
 *     as the array that isc_start_multiple takes.
 * Only the functions the program imports are here (x86_64-w64-mingw32-nm -u on it lists them);
 * fbclient.def names them. */
#include <limits.h>
#include <stdarg.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

/* winegcc defines the Windows macros, with which ibase.h would declare the Linux client's
 * functions in Windows' calling convention: it is read without them. */
#pragma push_macro("WIN32")
#pragma push_macro("_WIN32")
#pragma push_macro("__WIN32__")
#undef WIN32
#undef _WIN32
#undef __WIN32__
#include <ibase.h>
#pragma pop_macro("WIN32")
#pragma pop_macro("_WIN32")
#pragma pop_macro("__WIN32__")

#include <windef.h>
#include <winbase.h>
#include <winnls.h>

/* The Windows layout of struct tm: nine ints. */
struct tm_windows {
  int tm_sec, tm_min, tm_hour, tm_mday, tm_mon, tm_year, tm_wday, tm_yday, tm_isdst;
};

/* The fields both layouts have, copied from `origem` to `destino` in either direction. */
#define COPIAR_CAMPO(campo) destino->campo = origem->campo;
#define COPIAR_TM                                                                            \
  COPIAR_CAMPO(tm_sec) COPIAR_CAMPO(tm_min) COPIAR_CAMPO(tm_hour) COPIAR_CAMPO(tm_mday)      \
  COPIAR_CAMPO(tm_mon) COPIAR_CAMPO(tm_year) COPIAR_CAMPO(tm_wday) COPIAR_CAMPO(tm_yday)     \
  COPIAR_CAMPO(tm_isdst)

static void tm_para_linux(const struct tm_windows* origem, struct tm* destino) {
  memset(destino, 0, sizeof *destino);
  COPIAR_TM
}

static void tm_para_windows(const struct tm* origem, struct tm_windows* destino) { COPIAR_TM }

/* Forwarders of the calls whose arguments both systems lay out alike. PARAMS declares the
 * arguments, ARGS names them. */
#define REPASSAR(TIPO, NOME, PARAMS, ARGS) \
  TIPO WINAPI substituto_##NOME PARAMS { return NOME ARGS; }

REPASSAR(ISC_LONG, fb_interpret, (ISC_SCHAR* buffer, unsigned int tamanho, const ISC_STATUS** vetor),
         (buffer, tamanho, vetor))
REPASSAR(ISC_STATUS, isc_blob_info,
         (ISC_STATUS* s, isc_blob_handle* b, short n, const ISC_SCHAR* itens, short m, ISC_SCHAR* buffer),
         (s, b, n, itens, m, buffer))
REPASSAR(ISC_STATUS, isc_close_blob, (ISC_STATUS* s, isc_blob_handle* b), (s, b))
REPASSAR(ISC_STATUS, isc_commit_transaction, (ISC_STATUS* s, isc_tr_handle* t), (s, t))
REPASSAR(ISC_STATUS, isc_create_blob,
         (ISC_STATUS* s, isc_db_handle* d, isc_tr_handle* t, isc_blob_handle* b, ISC_QUAD* id), (s, d, t, b, id))
REPASSAR(ISC_STATUS, isc_database_info,
         (ISC_STATUS* s, isc_db_handle* d, short n, const ISC_SCHAR* itens, short m, ISC_SCHAR* buffer),
         (s, d, n, itens, m, buffer))
REPASSAR(ISC_STATUS, isc_detach_database, (ISC_STATUS* s, isc_db_handle* d), (s, d))
REPASSAR(ISC_STATUS, isc_dsql_allocate_statement, (ISC_STATUS* s, isc_db_handle* d, isc_stmt_handle* c),
         (s, d, c))
REPASSAR(ISC_STATUS, isc_dsql_describe, (ISC_STATUS* s, isc_stmt_handle* c, unsigned short v, XSQLDA* x),
         (s, c, v, x))
REPASSAR(ISC_STATUS, isc_dsql_describe_bind, (ISC_STATUS* s, isc_stmt_handle* c, unsigned short v, XSQLDA* x),
         (s, c, v, x))
REPASSAR(ISC_STATUS, isc_dsql_execute,
         (ISC_STATUS* s, isc_tr_handle* t, isc_stmt_handle* c, unsigned short v, const XSQLDA* x), (s, t, c, v, x))
REPASSAR(ISC_STATUS, isc_dsql_fetch, (ISC_STATUS* s, isc_stmt_handle* c, unsigned short v, const XSQLDA* x),
         (s, c, v, x))
REPASSAR(ISC_STATUS, isc_dsql_free_statement, (ISC_STATUS* s, isc_stmt_handle* c, unsigned short opcao),
         (s, c, opcao))
REPASSAR(ISC_STATUS, isc_dsql_prepare,
         (ISC_STATUS* s, isc_tr_handle* t, isc_stmt_handle* c, unsigned short n, const ISC_SCHAR* sql,
          unsigned short dialeto, XSQLDA* x),
         (s, t, c, n, sql, dialeto, x))
REPASSAR(ISC_STATUS, isc_dsql_sql_info,
         (ISC_STATUS* s, isc_stmt_handle* c, short n, const ISC_SCHAR* itens, short m, ISC_SCHAR* buffer),
         (s, c, n, itens, m, buffer))
REPASSAR(ISC_STATUS, isc_get_segment,
         (ISC_STATUS* s, isc_blob_handle* b, unsigned short* lido, unsigned short n, ISC_SCHAR* buffer),
         (s, b, lido, n, buffer))
REPASSAR(ISC_STATUS, isc_open_blob2,
         (ISC_STATUS* s, isc_db_handle* d, isc_tr_handle* t, isc_blob_handle* b, ISC_QUAD* id, ISC_USHORT n,
          const ISC_UCHAR* bpb),
         (s, d, t, b, id, n, bpb))
REPASSAR(ISC_STATUS, isc_put_segment, (ISC_STATUS* s, isc_blob_handle* b, unsigned short n, const ISC_SCHAR* dados),
         (s, b, n, dados))
REPASSAR(ISC_STATUS, isc_rollback_transaction, (ISC_STATUS* s, isc_tr_handle* t), (s, t))
REPASSAR(ISC_LONG, isc_vax_integer, (const ISC_SCHAR* bytes, short n), (bytes, n))

/* Dates and times to and from struct tm, through a glibc one. */
#define CODIFICAR(NOME, TIPO)                                      \
  void WINAPI substituto_##NOME(const void* tm, TIPO* valor) {     \
    struct tm l;                                                   \
    tm_para_linux(tm, &l);                                         \
    NOME(&l, valor);                                               \
  }
#define DECODIFICAR(NOME, TIPO)                                    \
  void WINAPI substituto_##NOME(const TIPO* valor, void* tm) {     \
    struct tm l;                                                   \
    memset(&l, 0, sizeof l);                                       \
    NOME(valor, &l);                                               \
    tm_para_windows(&l, tm);                                       \
  }
CODIFICAR(isc_encode_sql_date, ISC_DATE)
CODIFICAR(isc_encode_sql_time, ISC_TIME)
CODIFICAR(isc_encode_timestamp, ISC_TIMESTAMP)
DECODIFICAR(isc_decode_sql_date, ISC_DATE)
DECODIFICAR(isc_decode_sql_time, ISC_TIME)
DECODIFICAR(isc_decode_timestamp, ISC_TIMESTAMP)

/* The Windows name of the database last attached, which the Linux client's messages about it
 * name in its place: a status vector points at it until the next attach. One for the process
 * (the program attaches one database at a time; thread-local storage of a winelib library
 * does not work under Wine). */
static char nome_windows[MAX_PATH];

/* The status vector's string arguments that are `de_unix` point at `de_windows` instead: the messages
 * name the database as the program named it, as the Windows client's would. */
static void nomear_como_windows(ISC_STATUS* s, const char* de_unix, const char* de_windows) {
  while (*s != isc_arg_end) {
    const ISC_STATUS tipo = *s++;
    if (tipo == isc_arg_cstring) {
      s += 2;  /* length, then text */
      continue;
    }
    if (tipo == isc_arg_string && strcmp((const char*)*s, de_unix) == 0) *s = (ISC_STATUS)de_windows;
    ++s;
  }
}

/* Wine names a file of drive C: through its folder of drives (.../dosdevices/c:/...), a colon
 * that would make the Linux client read the part before it as a server's name: the folder's
 * real path is given instead, with the file's name (the file may not exist). Into `real`, of
 * PATH_MAX bytes; 0 when the folder has no real path. */
static int caminho_real(const char* caminho, char* real) {
  const char* barra = strrchr(caminho, '/');
  if (barra == NULL) return 0;
  char pasta[PATH_MAX];
  const size_t n = (size_t)(barra - caminho);
  if (n == 0 || n >= sizeof pasta) return 0;
  memcpy(pasta, caminho, n);
  pasta[n] = 0;
  if (realpath(pasta, real) == NULL || strlen(real) + strlen(barra) >= PATH_MAX) return 0;
  strcat(real, barra);
  return 1;
}

/* A database named by a Windows path (a drive letter, a colon, a slash) is opened by its Unix
 * path; any other name (a server's "host:path", an alias) goes as it is. */
ISC_STATUS WINAPI substituto_isc_attach_database(ISC_STATUS* s, short n, const ISC_SCHAR* nome, isc_db_handle* d,
                                                 short m, const ISC_SCHAR* dpb) {
  const size_t tamanho = n != 0 ? (size_t)n : strlen(nome);
  if (tamanho < 3 || tamanho >= MAX_PATH || nome[1] != ':' || (nome[2] != '\\' && nome[2] != '/'))
    return isc_attach_database(s, n, nome, d, m, dpb);
  WCHAR largo[MAX_PATH];
  const int caracteres = MultiByteToWideChar(CP_UTF8, 0, nome, (int)tamanho, largo, MAX_PATH - 1);
  largo[caracteres] = 0;
  char* pela_unidade = caracteres > 0 ? wine_get_unix_file_name(largo) : NULL;
  char caminho_unix[PATH_MAX];
  const int traduzido = pela_unidade != NULL && caminho_real(pela_unidade, caminho_unix);
  HeapFree(GetProcessHeap(), 0, pela_unidade);
  if (!traduzido) return isc_attach_database(s, n, nome, d, m, dpb);
  memcpy(nome_windows, nome, tamanho);
  nome_windows[tamanho] = 0;
  const ISC_STATUS r = isc_attach_database(s, 0, caminho_unix, d, m, dpb);
  if (r != 0) nomear_como_windows(s, caminho_unix, nome_windows);
  return r;
}

/* isc_start_transaction(status, transaction, count, then per database: its handle, the
 * length of its parameter block, the block) becomes isc_start_multiple with an array of what
 * the Linux client calls a TEB (a transaction element block). */
struct teb {
  isc_db_handle* banco;
  int tamanho_tpb;
  const ISC_SCHAR* tpb;
};

ISC_STATUS WINAPIV substituto_isc_start_transaction(ISC_STATUS* s, isc_tr_handle* t, short bancos, ...) {
  struct teb tebs[bancos > 0 ? bancos : 1];
  __ms_va_list args;
  __ms_va_start(args, bancos);
  for (short i = 0; i < bancos; ++i) {
    tebs[i].banco = va_arg(args, isc_db_handle*);
    tebs[i].tamanho_tpb = va_arg(args, int);
    tebs[i].tpb = va_arg(args, const ISC_SCHAR*);
  }
  __ms_va_end(args);
  return isc_start_multiple(s, t, bancos, tebs);
}
