#include "frontend/syntax/meant_keyword.h"

#include "frontend/base/spelling.h"
#include "frontend/syntax/host_lines.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace orvex::frontend {

namespace {

const notation::Keyword* begins_alike(std::string_view word) {
    constexpr std::size_t shortest_start = 4;
    const auto keywords = notation::keywords();
    const auto found = std::find_if(keywords.begin(), keywords.end(), [&](const auto& keyword) {
        const std::size_t shorter = std::min(keyword.word.size(), word.size());
        return shorter >= shortest_start &&
               word.substr(0, shorter) == keyword.word.substr(0, shorter);
    });
    return found == keywords.end() ? nullptr : &*found;
}

}  // namespace

const notation::Keyword* meant_keyword(std::string_view word) {
    if (belongs_outside(word)) return nullptr;
    std::vector<std::string> words;
    for (const notation::Keyword& keyword : notation::keywords()) words.emplace_back(keyword.word);
    const std::string near = nearest(word, words);
    return near.empty() ? begins_alike(word) : notation::find_keyword(near);
}

std::size_t joined_keyword(std::string_view word) {
    using notation::Opens;
    for (const notation::Keyword& keyword : notation::keywords()) {
        const bool is_named = keyword.opens == Opens::production ||
                              keyword.opens == Opens::demand || keyword.opens == Opens::constraint;
        const std::size_t size = keyword.word.size();
        if (is_named && word.size() > size && word.starts_with(keyword.word)) return size;
    }
    return 0;
}

bool belongs_outside(std::string_view word) {
    return word == "MODEL" || word == comment_directive || word == include_directive;
}

}  // namespace orvex::frontend
