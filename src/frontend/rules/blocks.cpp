#include "frontend/rules/checks.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/warn.h"
#include "notation/keywords.h"

#include <algorithm>
#include <string>

namespace orvex::frontend {

namespace {

using notation::Opens;

std::string keyword_of(Kind kind) {
    const Opens opens = kind == Kind::sector ? Opens::production : Opens::demand;
    const auto keywords = notation::keywords();
    const auto found =
        std::find_if(keywords.begin(), keywords.end(),
                     [opens](const notation::Keyword& row) { return row.opens == opens; });
    return std::string(found->word);
}

}  // namespace

void check_block_missing(const Subject& subject, Findings& findings) {
    for (const Index index : subject.facts->judged) {
        const Symbol& symbol = subject.model->symbols[index];
        const bool needs_block = symbol.kind == Kind::sector || symbol.kind == Kind::consumer;
        if (!needs_block || subject.facts->blocks[index] != nullptr) continue;
        if (!is_used(*subject.model, symbol) || is_doubtful(*subject.facts, symbol.kind)) continue;
        warn(subject, findings, symbol.declaration,
             {{"kind", std::string(kind_name(symbol.kind))},
              {"name", name_of(*subject.model, index)},
              {"block", keyword_of(symbol.kind)}});
    }
}

}  // namespace orvex::frontend
