#include "frontend/server/folders.h"

#include "frontend/cli/inputs.h"
#include "frontend/server/types.h"
#include "frontend/syntax/source.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

namespace orvex::frontend {

namespace {

std::set<std::string> files_of(const Server& server) {
    std::set<std::string> files;
    for (const std::string& folder : server.folders) {
        try {
            for (std::string& file : expand_folders({folder})) files.insert(std::move(file));
        } catch (const UsageError&) {
            // This folder has no models.
        }
    }
    return files;
}

bool is_open(const Server& server, const std::string& path) {
    return std::any_of(server.open.begin(), server.open.end(),
                       [&](const auto& open) { return open.second.document.source.path == path; });
}

}  // namespace

void each_closed_text(const Server& server, const std::function<void(const Document&)>& take) {
    for (const std::string& path : files_of(server)) {
        Document document;
        document.uri = uri_of_path(path);
        document.units = server.units;
        if (is_open(server, path) || may_wait(path)) continue;
        if (!read_source(path, document.source)) continue;
        document.source.path = path;
        set_text(document, std::move(document.source.bytes));
        read_text(document);
        take(document);
    }
}

}  // namespace orvex::frontend
