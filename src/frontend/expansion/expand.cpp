#include "frontend/expansion/expand.h"

#include "frontend/expansion/interpreter.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/messages.h"
#include "frontend/findings/place.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/reading.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace orvex::frontend {

namespace {

using std::string_view;

// Where a text is in a line; a word is found only as a whole word.
std::size_t find_text(string_view line, string_view text) {
    const bool is_word = is_name_byte(text.front());
    for (std::size_t at = line.find(text); at != string_view::npos; at = line.find(text, at + 1)) {
        const std::size_t end = at + text.size();
        const bool is_joined =
            is_word &&
            ((at > 0 && is_name_byte(line[at - 1])) ||
             (end < line.size() && is_name_byte(text.back()) && is_name_byte(line[end])));
        if (!is_joined) return at;
    }
    return string_view::npos;
}

// The part of the model that a place of the generator file comes from: its text, in the line whose
// number the generator file has, or in the nearest line before that, since an entry is written only
// after the next line has been read.
Span model_place(const GeneratedModel& generated, Range place) {
    const Source& source = generated.source;
    const ModelText& model = source.models[generated.model.node];
    const int listed = listed_line(generated.generator, place.begin);
    const int last = listed == 0 ? model.last
                                 : std::clamp(model.line + listed - generated.lines_before,
                                              model.line, model.last);
    const string_view text = text_of(generated.generator, place);
    for (int line = last; !text.empty() && line > model.line; --line) {
        const std::size_t at = find_text(capitals(line_text(source, line)), text);
        if (at == string_view::npos) continue;
        const auto begin = static_cast<Offset>(line_begin(source, line) + at);
        return span_of(source, {begin, begin + static_cast<Offset>(text.size())});
    }
    return record_span(source, last);
}

// A value that guards its entry is evaluated at two places of the generator file, but has one place
// in the model.
bool is_same(const Finding& a, const Finding& b) {
    return a.code == b.code && a.message == b.message && a.span.begin == b.span.begin &&
           a.span.line == b.span.line;
}

}  // namespace

Finding finding_of(const GeneratedModel& generated, const Flaw& flaw) {
    const std::string code(flaw.code);
    const Span span = model_place(generated, flaw.place);
    const MessageEntry* const entry = find_code(code);
    const bool is_warning = entry != nullptr && level_of(*entry) != Severity::error;
    Finding finding = is_warning ? warning(code, flaw.values, span, flaw.variant)
                                 : failure(code, flaw.values, span, flaw.variant);
    advise_near(finding, flaw.values);
    return finding;
}

void add_findings(const GeneratedModel& generated, const std::vector<Flaw>& flaws,
                  std::vector<Finding>& findings) {
    for (const Flaw& flaw : flaws) {
        Finding finding = finding_of(generated, flaw);
        const bool is_known =
            std::any_of(findings.begin(), findings.end(),
                        [&](const Finding& other) { return is_same(finding, other); });
        if (!is_known) findings.push_back(std::move(finding));
    }
}

Span span_of_place(const GeneratedModel& generated, Range place) {
    return model_place(generated, place);
}

int line_of_place(const GeneratedModel& generated, Range place) {
    return model_place(generated, place).line;
}

Variables variables_of(const Model& model) {
    Variables variables;
    for (const Index number : model.declared) {
        const Symbol& symbol = model.symbols[number];
        if (is_variable(symbol.kind))
            variables.emplace(name_of(model, number), static_cast<int>(symbol.arguments.size()));
    }
    return variables;
}

void note_names_in_constraints(const Model& model, DataFiles& files) {
    for (const Use& use : model.uses) {
        const Index name =
            use.role == Role::constraint ? files.names.find(name_of(model, use.symbol)) : no_index;
        if (name != no_index) files.used.insert(name);
    }
}

bool prepare_expansion(const GeneratedModel& generated, DataFiles& files, const Pause& pause,
                       Expansion& expansion, std::vector<Finding>& findings) {
    note_names_in_constraints(generated.model, files);
    std::vector<Flaw> flaws;
    expansion.program = read_program(generated.generator, flaws);
    const bool has_data = make_data(files, expansion.program, variables_of(generated.model),
                                    expansion.data, findings);
    if (has_data) check_data(expansion.program, expansion.data, flaws);
    const bool can_run = has_data && flaws.empty();
    if (can_run) expansion.passes = try_program(expansion.program, expansion.data, pause, flaws);
    const bool is_good = can_run && flaws.empty();
    if (has_data) find_unknown_elements(files, expansion.program, expansion.data, findings, flaws);
    add_findings(generated, flaws, findings);
    return is_good;
}

void expand(const Expansion& expansion, const Pause& pause, const TakeLine& take_line) {
    run_program(expansion.program, expansion.data, pause, take_line);
}

}  // namespace orvex::frontend
