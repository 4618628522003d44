// The words of a file: those of the host's own text, and those of the models.
#pragma once

#include "frontend/model/names.h"
#include "frontend/syntax/source.h"

#include <cstddef>
#include <string>
#include <vector>

namespace orvex::frontend {

struct HostText {
    // The host's text has statements, and names cannot come from other files or out of macros.
    bool is_whole = false;
    NameTable words;  // in capitals; those of comments are none
    std::vector<std::string> list;
    std::size_t model_count = 0;
    NameTable model_words;          // where the file has several models
    std::vector<Index> only_model;  // of each of these, the model that has it; no_index: several do
};

HostText read_host_text(const Source& source);

// Does another model of the file have the word?
bool is_in_other_model(const HostText& host, Index model, const std::string& word);

}  // namespace orvex::frontend
