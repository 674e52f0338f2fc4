// Finds shaders, at the service or by reading every shader of the cache: a list of records with nothing but
// their ids, which FetchShaderInfo fills when they are to be shown.
//
// A SearchContext is what the browser shows, made and owned by it. A search blocks its thread, so windows run
// it on a worker, with a context that nobody else touches until it has ended.
#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <stop_token>
#include <vector>

#include "core/ShaderProject.h"
#include "library/ShaderService.h"

namespace pixelgrove {

enum class SearchError {
    None,
    NoAnswer,  // from the service
    NoJson,    // the service answered something else
};

constexpr qsizetype kMaxSearchUnits = 255;

struct SearchContext {
    QString text;               // as the user typed it, kMaxSearchUnits at most
    bool local = false;         // read the cache instead of asking the service
    bool fromPlaylist = false;  // the records are a playlist's
    uint32_t total = 0;         // files to read, or results to unpack
    uint32_t done = 0;          // of these; files that hold no JSON aren't counted
    uint32_t page = 1;          // from 1
    uint32_t perPage = 10;      // never 0
    SearchError error = SearchError::None;
    QString problem;  // with an error: a clause for the user
    // A record that was removed, or whose id was too long, has an empty id and keeps its place.
    std::vector<ShaderInfo> results;
};

// A context for a search that is to be run: on page 1, with the rows of a page that the kind of search has.
SearchContext NewSearch(const QString& text, bool local);

// Called on the searching thread, which lets it read the context: with the fraction that is done, once for
// each whole percent, and with kSearchEnded at the end. False stops a local search.
using SearchProgress = std::function<bool(float fraction)>;
constexpr float kSearchEnded = 100.0f;

// Replaces the results by those of context.text. True when they are to be shown: also those of a local search
// that was stopped, by its progress or by the token, until then. A local search reads the cache's Shaders
// folder in the file system's order.
//
// False without results to show. The end is then reported with context.error set, or with no error where the
// service found nothing; it is not reported where there is nothing to search (no way to the service, no file
// in the cache), and where the service's JSON isn't a list of ids.
bool RunSearch(SearchContext& context, const ShaderService& service, const SearchProgress& progress,
               const std::stop_token& stop = {});

}  // namespace pixelgrove
