#include "host/sources/sql_catalog.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <set>
#include <sstream>

#include "base/error.h"

namespace infofiscal {

namespace {

// Rewrites the `?` and `?N` of one SELECT as :p1, :p2, ... (and splits it around them) and drops
// comments (a colon in a comment would read as a placeholder); quoted text is copied as it is.
ProviderQuery rewrite_placeholders(const std::string& sql, const std::string& where) {
  ProviderQuery query;
  query.between.emplace_back();
  const auto emit = [&](std::string_view text) {
    query.sql += text;
    query.between.back() += text;
  };
  std::size_t next = 0;
  for (std::size_t i = 0; i < sql.size();) {
    const char c = sql[i];
    if (c == '\'' || c == '"') {
      const auto end = sql.find(c, i + 1);
      const auto stop = end == std::string::npos ? sql.size() : end + 1;
      const std::string_view quoted(sql.data() + i, stop - i);
      emit(quoted);
      i = stop;
    } else if (c == '-' && i + 1 < sql.size() && sql[i + 1] == '-') {
      i = std::min(sql.find('\n', i), sql.size());
    } else if (c == '/' && i + 1 < sql.size() && sql[i + 1] == '*') {
      const auto end = sql.find("*/", i + 2);
      i = end == std::string::npos ? sql.size() : end + 2;
      emit(" ");
    } else if (c == '?') {
      std::size_t digits = i + 1;
      while (digits < sql.size() && std::isdigit(static_cast<unsigned char>(sql[digits]))) ++digits;
      // As SQLite numbers them: `?` is one more than the largest number used so far.
      std::size_t arg = next;
      if (digits > i + 1) {
        std::from_chars(sql.data() + i + 1, sql.data() + digits, arg);
        if (arg == 0) throw Error(where + ": parâmetro ?0 inválido (os parâmetros contam de 1)");
        --arg;
      }
      next = std::max(next, arg + 1);
      query.args.push_back(arg);
      query.sql += ":p" + std::to_string(query.args.size());
      query.between.emplace_back();
      i = digits;
    } else {
      emit(std::string_view(&c, 1));
      ++i;
    }
  }
  // Without the blanks around the statement and its closing semicolons.
  const auto tidy_end = [](std::string& text) {
    for (trim_end(text); !text.empty() && text.back() == ';'; trim_end(text)) text.pop_back();
  };
  for (std::string* text : {&query.sql, &query.between.front()}) trim_start(*text);
  for (std::string* text : {&query.sql, &query.between.back()}) tidy_end(*text);
  return query;
}

// One entry of the catalog: the words of its marker line after the name, and its SQL.
struct CatalogEntry {
  std::string name, dialect, sql, where;
  std::vector<std::string> words;
  int line = 0;
};

constexpr std::string_view kProviderMarker = "-- provider:";
constexpr std::string_view kPrefetchMarker = "-- prefetch:";

// Every entry under `marker`; a line of either marker ends the entry before it.
std::vector<CatalogEntry> catalog_entries(const std::string& text, std::string_view marker, const std::string& origin) {
  std::vector<CatalogEntry> entries;
  bool inside = false;  // in an entry of `marker`
  std::istringstream in(text);
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    const bool provider = line.rfind(kProviderMarker, 0) == 0, prefetch = line.rfind(kPrefetchMarker, 0) == 0;
    if (provider || prefetch) {
      inside = line.rfind(marker, 0) == 0;
      if (!inside) continue;
      const std::string at = "Catálogo '" + origin + "', linha " + std::to_string(number);
      std::istringstream words(line.substr(marker.size()));
      CatalogEntry entry;
      entry.line = number;
      words >> entry.name;
      if (entry.name.empty()) throw Error(at + ": provedor sem nome");
      for (std::string word; words >> word;) entry.words.push_back(word);
      if (!entry.words.empty() && entry.words.back().front() == '[') {
        entry.dialect = entry.words.back();
        entry.words.pop_back();
        if (entry.dialect.size() < 3 || entry.dialect.back() != ']')
          throw Error(at + ": use [banco] depois do nome");
        entry.dialect = entry.dialect.substr(1, entry.dialect.size() - 2);
      }
      if (marker == kProviderMarker && !entry.words.empty()) throw Error(at + ": use [banco] depois do nome");
      entry.where = "Catálogo '" + origin + "', " + (marker == kProviderMarker ? "provedor " : "leitura antecipada de ") +
                    entry.name + " (linha " + std::to_string(number) + ")";
      entries.push_back(std::move(entry));
    } else if (inside) {
      entries.back().sql += line + "\n";
    }
  }
  std::set<std::string> seen;  // name + dialect
  for (const CatalogEntry& entry : entries)
    if (!seen.insert(entry.name + "[" + entry.dialect + "]").second) throw Error(entry.where + ": provedor repetido");
  return entries;
}

// What `make` makes of each entry (every one, so that mistakes in the variants of other
// databases show too), by name: a "[database]" variant replaces the plain entry for its database.
template <class Make>
auto choose(const std::vector<CatalogEntry>& entries, const std::string& dialect, Make make) {
  std::map<std::string, decltype(make(entries.front()))> chosen;
  for (const CatalogEntry& entry : entries) {
    auto value = make(entry);
    if (entry.dialect.empty())
      chosen.emplace(entry.name, std::move(value));  // a variant seen earlier stays
    else if (entry.dialect == dialect)
      chosen.insert_or_assign(entry.name, std::move(value));
  }
  return chosen;
}

ProviderQuery entry_query(const CatalogEntry& entry) {
  ProviderQuery query = rewrite_placeholders(entry.sql, entry.where);
  if (query.sql.empty()) throw Error(entry.where + ": falta o SELECT");
  return query;
}

}  // namespace

ProviderCatalog parse_provider_catalog(const std::string& text, const std::string& dialect,
                                       const std::string& origin) {
  return choose(catalog_entries(text, kProviderMarker, origin), dialect, entry_query);
}

PrefetchCatalog parse_prefetch_catalog(const std::string& text, const std::string& dialect,
                                       const std::string& origin) {
  return choose(catalog_entries(text, kPrefetchMarker, origin), dialect, [](const CatalogEntry& entry) {
    if (entry.words.size() < 2)
      throw Error(entry.where + ": use '-- prefetch: PROVEDOR LISTA CHAVE...' (a lista e as colunas que nomeiam a nota)");
    PrefetchQuery prefetch{entry.words.front(), {}, entry_query(entry)};
    for (auto key = entry.words.begin() + 1; key != entry.words.end(); ++key) prefetch.keys.push_back(upper_case(*key));
    return prefetch;
  });
}

}  // namespace infofiscal
