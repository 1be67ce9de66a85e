#include "support/processo.h"

#include <io.h>
#include <windows.h>

#include <algorithm>
#include <map>

#include "base/system.h"

namespace infofiscal::testing {

namespace {

// One argument as the C runtime of the started program splits it back: in quotes when it holds
// a space, a tab or a quote (or is empty), a quote and the backslashes before it escaped.
std::wstring citado(const std::wstring& arg) {
  if (!arg.empty() && arg.find_first_of(L" \t\"") == std::wstring::npos) return arg;
  std::wstring out = L"\"";
  std::size_t barras = 0;
  for (const wchar_t c : arg) {
    if (c == L'\\') {
      ++barras;
      continue;
    }
    out.append(c == L'"' ? barras * 2 + 1 : barras, L'\\');
    barras = 0;
    out += c;
  }
  out.append(barras * 2, L'\\');
  return out + L"\"";
}

// This process's environment changed by `env`, as CreateProcessW takes it: NAME=VALUE\0...\0.
// Windows' variable names ignore case.
std::wstring ambiente(const Environment& env) {
  const auto maiusculas = [](std::wstring s) {
    std::transform(s.begin(), s.end(), s.begin(), ::towupper);
    return s;
  };
  std::map<std::wstring, std::wstring> variaveis;  // upper-case name -> NAME=VALUE
  wchar_t* atual = GetEnvironmentStringsW();
  for (const wchar_t* v = atual; *v != L'\0'; v += wcslen(v) + 1) {
    const std::wstring par = v;
    const std::size_t igual = par.find(L'=', 1);  // names of drives' folders begin with '='
    if (igual != std::wstring::npos) variaveis[maiusculas(par.substr(0, igual))] = par;
  }
  FreeEnvironmentStringsW(atual);
  for (const auto& [nome, valor] : env) {
    const std::wstring n = path_of(nome).native();
    if (valor)
      variaveis[maiusculas(n)] = n + L"=" + path_of(*valor).native();
    else
      variaveis.erase(maiusculas(n));
  }
  std::wstring bloco;
  for (const auto& [nome, par] : variaveis) bloco += par + L'\0';
  return bloco + L'\0';
}

// An inheritable copy of `handle` for the started program.
HANDLE herdavel(HANDLE handle) {
  HANDLE copia = nullptr;
  DuplicateHandle(GetCurrentProcess(), handle, GetCurrentProcess(), &copia, 0, TRUE, DUPLICATE_SAME_ACCESS);
  return copia;
}

HANDLE handle_of(Processo p) { return reinterpret_cast<HANDLE>(p.id); }

}  // namespace

Processo iniciar(const Lancamento& l) {
  std::wstring linha = citado(path_of(l.programa).native());
  for (const std::string& a : l.args) linha += L" " + citado(path_of(a).native());
  std::wstring env = ambiente(l.env);
  SECURITY_ATTRIBUTES herdar{sizeof herdar, nullptr, TRUE};
  const HANDLE nada = CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &herdar,
                                  OPEN_EXISTING, 0, nullptr);
  const auto saida = [&](int fd) { return fd >= 0 ? herdavel(reinterpret_cast<HANDLE>(_get_osfhandle(fd))) : nada; };
  STARTUPINFOW inicio{};
  inicio.cb = sizeof inicio;
  inicio.dwFlags = STARTF_USESTDHANDLES;
  inicio.hStdInput = nada;
  inicio.hStdOutput = saida(l.saida);
  inicio.hStdError = saida(l.erros);
  PROCESS_INFORMATION processo{};
  const std::wstring pasta = l.pasta.empty() ? std::wstring() : path_of(l.pasta).native();
  // Detached: no console of its own, whose host would keep the output files open a while after
  // the program ended; the standard handles are given above.
  const bool iniciou = CreateProcessW(nullptr, linha.data(), nullptr, nullptr, TRUE, CREATE_UNICODE_ENVIRONMENT | DETACHED_PROCESS,
                                      env.data(), pasta.empty() ? nullptr : pasta.c_str(), &inicio, &processo);
  for (const HANDLE h : {inicio.hStdOutput, inicio.hStdError})
    if (h != nada) CloseHandle(h);
  CloseHandle(nada);
  if (!iniciou) return {};
  CloseHandle(processo.hThread);
  return {reinterpret_cast<std::intptr_t>(processo.hProcess)};
}

int esperar(Processo p) {
  if (p.id == -1) return 127;  // not started, as a shell reports a program it cannot run
  WaitForSingleObject(handle_of(p), INFINITE);
  DWORD estado = 0;
  GetExitCodeProcess(handle_of(p), &estado);
  CloseHandle(handle_of(p));
  return static_cast<int>(estado);
}

void matar(Processo p) {
  if (p.id != -1) TerminateProcess(handle_of(p), 137);
}

}  // namespace infofiscal::testing
