#include "frontend/rules/errors.h"

#include "frontend/findings/faults.h"
#include "frontend/findings/messages.h"
#include "frontend/findings/place.h"
#include "frontend/findings/wording.h"
#include "frontend/rules/error_help.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace orvex::frontend {

namespace {

// What stands for the text of an error in the message of its code.
std::string_view place_of_text(Fault fault) {
    switch (fault) {
    case Fault::keyword_colon:
    case Fault::keyword_unknown:
    case Fault::keyword_order: return "keyword";
    case Fault::leadlg_both:
    case Fault::leadlg_inactive:
    case Fault::chkset_inactive: return "argument";
    case Fault::repblk_second:
    case Fault::repblk_third: return "label";
    default: return "name";
    }
}

void add_note(Finding& finding, std::string text, Span span = {}) {
    finding.remarks.push_back({Severity::note, std::move(text), std::move(span)});
}

void add_help(Finding& finding, std::string text) {
    if (!text.empty()) finding.remarks.push_back({Severity::help, std::move(text), {}});
}

std::string with_arguments(int count) {
    if (count == 0) return "without arguments";
    return "with " + std::to_string(count) + (count == 1 ? " argument" : " arguments");
}

// Where a name was declared or first used, for the errors that are about two uses of it.
void add_first_use(const ErrorCase& at, Finding& finding) {
    const Symbol& symbol = at.model.symbols[at.error.symbol];
    Range place = symbol.declaration;
    for (Index use = symbol.first_use; place.empty() && use != no_index;
         use = at.model.uses[use].next) {
        if (at.model.uses[use].listed != no_index) place = at.model.uses[use].range;
    }
    if (place.empty() || place == at.error.place) return;
    std::string text = back_quoted(name_of(at.model, at.error.symbol));
    text += symbol.is_declared ? " was declared here, " : " was first used here, ";
    text += at.error.fault == Fault::addsym_dimension
                ? with_arguments(symbol.dimension)
                : "as " + std::string(kind_with_article(symbol.kind));
    add_note(finding, text, span_of(at.source, place));
}

void add_report_block(const ErrorCase& at, Finding& finding) {
    const auto& blocks = at.model.blocks;
    const auto report = std::find_if(blocks.begin(), blocks.end(), [](const Block& block) {
        return is_opened_by(block, notation::Opens::report);
    });
    if (report == blocks.end()) return;
    add_note(finding, "the report block begins here",
             record_span(at.source, line_of_record(report->record)));
}

void add_open_model(const ErrorCase& at, Finding& finding) {
    const Index record = at.source.tree.models[at.model.node].record;
    add_note(finding,
             "model " + back_quoted(at.model.name) +
                 ", which begins here, has no `$OFFTEXT` before that",
             record_span(at.source, line_of_record(record)));
    add_help(finding, "write `$OFFTEXT` in column 1 where the model ends");
}

// Further places of the same cause: the first ones are shown, the lines of all others are listed.
void add_places(const ErrorCase& at, Finding& finding) {
    constexpr std::size_t shown = 3;
    const std::vector<Range>& places = at.error.also;
    for (std::size_t i = 0; i < std::min(shown, places.size()); ++i)
        add_note(finding, "it is the same here", span_of(at.source, places[i]));
    if (places.size() <= shown) return;
    std::vector<int> lines;
    for (std::size_t i = shown; i < places.size(); ++i)
        lines.push_back(line_of(at.source.tree, places[i].begin));
    add_note(finding, "and in " + line_list(lines));
}

void add_remarks(const ErrorCase& at, Finding& finding) {
    if (lacks_end(at)) return add_open_model(at, finding);
    switch (at.error.fault) {
    case Fault::addsym_type:
    case Fault::addsym_dimension:
    case Fault::chksym_type: add_first_use(at, finding); break;
    case Fault::keyword_order: add_report_block(at, finding); break;
    default: break;
    }
    add_places(at, finding);
    if (const std::string name = at.is_compared ? meant(at) : ""; !name.empty())
        return add_help(finding, "did you mean " + back_quoted(name) + "?");
    const std::string help = own_help(at);
    const MessageEntry* const entry = find_code(finding.code);
    add_help(finding, !help.empty() || entry == nullptr ? help : help_of(*entry, {}));
}

Finding finding_of(const ErrorCase& at) {
    Finding finding;
    finding.severity = Severity::error;
    finding.code = code_of(at.error.fault);
    const MessageEntry* const entry = find_code(finding.code);
    const Values values = {{std::string(place_of_text(at.error.fault)), at.error.text}};
    if (entry != nullptr) finding.message = message_of(*entry, values);
    finding.span = span_of(at.source, at.error.place);
    add_remarks(at, finding);
    return finding;
}

bool has_declaration(const Model& model, Kind kind) {
    return std::any_of(model.blocks.begin(), model.blocks.end(), [kind](const Block& block) {
        return is_opened_by(block, notation::Opens::declaration) &&
               kind_of_type(block.keyword->type) == kind;
    });
}

// Where a model declares nothing of a kind, all names that it lacks have one cause: the first
// stands for the others.
class MissingDeclarations {
  public:
    explicit MissingDeclarations(const Source& source, const Model& model)
        : source_(source), model_(model) {}

    // Is the error told by one before it?
    bool takes(const Error& error, std::vector<Finding>& findings) {
        if (error.fault != Fault::addsym_undeclared || has_declaration(model_, error.expected))
            return false;
        const auto [first, is_new] = first_.emplace(error.expected, findings.size());
        if (is_new) return false;
        Finding& finding = findings[first->second];
        const auto help =
            std::find_if(finding.remarks.begin(), finding.remarks.end(),
                         [](const Remark& remark) { return remark.severity == Severity::help; });
        finding.remarks.insert(
            help, {Severity::note, back_quoted(error.text) + " is not declared, either",
                   span_of(source_, error.place)});
        return true;
    }

  private:
    const Source& source_;
    const Model& model_;
    std::map<Kind, std::size_t> first_;  // the finding of each kind
};

}  // namespace

void add_errors(const Source& source, const Model& model, std::vector<Finding>& findings) {
    // To compare each wrong name with all others would take too long where nearly all are wrong.
    constexpr std::size_t most_compared = 1000;
    MissingDeclarations missing(source, model);
    for (const Error& error : model.errors) {
        if (missing.takes(error, findings)) continue;
        findings.push_back(finding_of({source, model, error, findings.size() < most_compared}));
    }
}

}  // namespace orvex::frontend
