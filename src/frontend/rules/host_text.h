// The words of a file: those in the host's own text, and those in the models.
#pragma once

#include "frontend/model/names.h"
#include "frontend/syntax/source.h"

#include <cstddef>
#include <string>
#include <vector>

namespace orvex::frontend {

struct HostText {
    // The host's text has statements, and names cannot come from other files or from macros.
    bool is_whole = false;
    NameTable words;  // in capitals, without those in comments
    std::vector<std::string> list;
    std::size_t model_count = 0;
    NameTable model_words;          // if the file has several models
    std::vector<Index> only_model;  // the model that has each of these; no_index: several do
};

HostText read_host_text(const Source& source);

// Does another model of the file have the word?
bool is_in_other_model(const HostText& host, Index model, const std::string& word);

}  // namespace orvex::frontend
