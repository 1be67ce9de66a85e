// The provider catalog of the SQL sources: one SELECT per provider, read from plain SQL text
// with a marker line before each provider:
//
//   -- provider: DspCompra
//   SELECT ... FROM compra c WHERE c.cdcompra = ?;
//
//   -- provider: DspCompra [firebird]     (a variant for one back end; the plain entry serves
//   SELECT ...;                            the others)
//
// `?N` takes the N-th value of the fetch (from 1: the parameters of a parameter open, or the
// data-request array), `?` the one after the largest number used so far (the first, at first).
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/sources/sql_statement.h"

namespace infofiscal {

// Provider name -> query, for one back end ("sqlite", "postgresql", "firebird").
using ProviderCatalog = std::map<std::string, ProviderQuery>;

// Parses catalog text for `dialect`; `origin` names the file in messages. Throws Error for a
// provider given twice, a provider without SELECT, or a bad `?N`.
ProviderCatalog parse_provider_catalog(const std::string& text, const std::string& dialect,
                                       const std::string& origin);

// Fetching ahead: "-- prefetch: PROVIDER LIST KEY... [database]" gives a SELECT that answers
// the per-note PROVIDER for every note of LIST (a list provider) at once: it takes the list's
// values and returns the columns of PROVIDER plus the KEY columns, which name the note as
// PROVIDER's values do, in order (e.g. CDTIPONOTAFISCAL CDNOTAFISCAL), the notes in the list's
// order and the rows of each note in PROVIDER's.
struct PrefetchQuery {
  std::string list;
  std::vector<std::string> keys;  // upper case
  ProviderQuery query;
};
using PrefetchCatalog = std::map<std::string, PrefetchQuery>;  // by per-note provider

// The prefetch entries of catalog text, as parse_provider_catalog reads the providers.
PrefetchCatalog parse_prefetch_catalog(const std::string& text, const std::string& dialect,
                                       const std::string& origin);

}  // namespace infofiscal
