#include "frontend/rules/errors.h"

#include "frontend/findings/failure.h"
#include "frontend/findings/faults.h"
#include "frontend/findings/messages.h"
#include "frontend/findings/place.h"
#include "frontend/findings/wording.h"
#include "frontend/rules/error_case.h"
#include "frontend/rules/error_place.h"
#include "frontend/rules/error_texts.h"
#include "frontend/rules/missing_end.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

// The placeholder for the text of an error in the message of its code.
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

using Say = void (*)(const ErrorCase& at, Said& said);

// The routine that finds the words for an error; null if the text of its code is enough.
Say words_for(Fault fault) {
    switch (fault) {
    case Fault::keyword_colon:
    case Fault::keyword_unknown: return say_keyword;
    case Fault::keyword_order: return say_late_declaration;
    case Fault::getfld_blank: return say_comment;
    case Fault::getfld_label: return say_unlabelled;
    case Fault::freefd_end: return say_open_declaration;
    case Fault::extarg_left: return say_bare_indices;
    case Fault::extarg_right: return say_open_indices;
    case Fault::extarg_close: return say_text_after_indices;
    case Fault::extarg_invalid: return say_quoted_index;
    case Fault::rdarg_parentheses: return say_open_arguments;
    case Fault::rdarg_many:
    case Fault::rdarg_seven: return say_many_arguments;
    case Fault::rdarg_close: return say_text_after_arguments;
    case Fault::rdarg_invalid: return say_broken_quotes;
    case Fault::rdcond_close: return say_open_expression;
    case Fault::chkcnd_parentheses: return say_open_condition;
    case Fault::chrfld_long:
    case Fault::numfld_long: return say_long_statement;
    case Fault::addsym_type: return say_kind;
    case Fault::addsym_dimension: return say_dimension;
    case Fault::addsym_undeclared: return say_undeclared;
    case Fault::addsym_length: return say_long_name;
    case Fault::chksym_type: return say_constrained_kind;
    case Fault::chksym_unknown: return say_constrained_name;
    case Fault::leadlg_both: return say_lead_and_lag;
    case Fault::leadlg_inactive: return say_shifted_set;
    case Fault::chkset_inactive: return say_unlooped_set;
    case Fault::repblk_first: return say_report_start;
    case Fault::repblk_single: return say_nothing_reported;
    case Fault::repblk_condition: return say_reported_condition;
    case Fault::repblk_second:
    case Fault::repblk_third: return say_report_field;
    case Fault::repblk_extra: return say_extra_field;
    default: return nullptr;
    }
}

void add_note(Finding& finding, std::string text, Span span = {}) {
    finding.remarks.push_back({Severity::note, std::move(text), std::move(span)});
}

// Adds further places with the same cause: the first ones are shown, the lines of the others are
// listed.
void add_places(const ErrorCase& at, Finding& finding) {
    constexpr std::size_t shown = 3;
    const std::vector<Range>& places = at.error.also;
    for (std::size_t i = 0; i < std::min(shown, places.size()); ++i)
        add_note(finding, "the same here", span_of(at.source, places[i]));
    if (places.size() <= shown) return;
    std::vector<int> lines;
    for (std::size_t i = shown; i < places.size(); ++i)
        lines.push_back(line_of(at.source.tree, places[i].begin));
    add_note(finding, "and in " + line_list(lines));
}

std::string help_of(std::string_view code, const Said& said) {
    if (!said.meant.empty()) return "did you mean " + back_quoted(said.meant) + "?";
    const MessageEntry* const entry = find_code(code);
    if (entry == nullptr) return {};
    return help_of(*entry, said.values, said.help.empty() ? said.variant : said.help);
}

Finding finding_of(const ErrorCase& at) {
    Said said;
    said.place = at.error.place;
    said.values[std::string(place_of_text(at.error.fault))] = at.error.text;
    if (const Say say = words_for(at.error.fault); say != nullptr) say(at, said);
    Finding finding = failure(std::string(code_of(at.error.fault)), said.values,
                              span_of(at.source, said.place), said.variant);
    set_help(finding, help_of(finding.code, said));
    const std::vector<Remark> helps = std::exchange(finding.remarks, std::move(said.notes));
    add_places(at, finding);
    finding.remarks.insert(finding.remarks.end(), helps.begin(), helps.end());
    finding.fix = std::move(said.fix);
    return finding;
}

// If a model declares nothing of a kind, all missing names of that kind have one cause, and so do
// all that another declaration has taken: only the first is reported.
class MissingDeclarations {
  public:
    explicit MissingDeclarations(const Source& source, const Model& model)
        : source_(source), model_(model) {}

    // Is the error covered by an earlier one?
    bool takes(const Error& error, std::vector<Finding>& findings) {
        const bool is_undeclared = error.fault == Fault::addsym_undeclared;
        const bool is_of_kind = is_undeclared || error.fault == Fault::addsym_type;
        if (!is_of_kind || !is_variable(error.expected) || declares(model_, error.expected))
            return false;
        const auto [first, is_new] =
            first_.emplace(std::pair(error.fault, error.expected), findings.size());
        if (is_new) return false;
        const std::string name = back_quoted(error.text);
        add(findings[first->second],
            is_undeclared ? name + " is not declared either" : "the same for " + name, error.place);
        return true;
    }

  private:
    // Inserts the note before the help.
    void add(Finding& finding, std::string text, Range place) const {
        const auto help =
            std::find_if(finding.remarks.begin(), finding.remarks.end(),
                         [](const Remark& remark) { return remark.severity == Severity::help; });
        finding.remarks.insert(help, {Severity::note, std::move(text), span_of(source_, place)});
    }

    const Source& source_;
    const Model& model_;
    std::map<std::pair<Fault, Kind>, std::size_t> first_;  // the finding of each kind
};

// Errors that are consequences of others: in a field or a report record that already has an error,
// and in text outside the model.
class Consequences {
  public:
    Consequences(const Source& source, const Model& model)
        : tree_(source.tree), host_text_(first_host_text(source, model)) {
        for (const Error& error : model.errors) {
            const bool is_one = error.fault == Fault::addsym_dimension && error.also.empty();
            if (is_one && error.dimension > model.symbols[error.symbol].dimension)
                wide_.insert(field_at(tree_, error.place.begin));
        }
    }

    Index host_text() const { return host_text_; }

    // Is the error a consequence? If not, others may be consequences of it.
    bool has(const Error& error) {
        if (host_text_ != no_index && error.record > host_text_) return true;
        if (error.fault == Fault::repblk_extra && reports_.contains(error.record)) return true;
        if (is_of_wide_list(error)) return true;
        if (tree_.records[error.record].kind == RecordKind::report) reports_.insert(error.record);
        bool is_new = add_field(error.place);
        for (const Range place : error.also) is_new = add_field(place) || is_new;
        return !is_new;
    }

  private:
    // A set that a row does not loop over, and that its name does not have, is one set too many.
    bool is_of_wide_list(const Error& error) const {
        return error.fault == Fault::chkset_inactive && error.also.empty() &&
               wide_.contains(field_at(tree_, error.place.begin));
    }

    // False if the place is in a field that is known to have an error.
    bool add_field(Range place) {
        const Index field = field_at(tree_, place.begin);
        return field == no_index || fields_.insert(field).second;
    }

    const Tree& tree_;
    Index host_text_;
    std::set<Index> wide_;  // fields in which a name has more sets than elsewhere
    std::set<Index> fields_;
    std::set<Index> reports_;
};

}  // namespace

void add_errors(const Source& source, const Model& model, std::vector<Finding>& findings) {
    // Comparing each wrong name with all others would take too long if nearly all are wrong.
    constexpr std::size_t most_compared = 1000;
    MissingDeclarations missing(source, model);
    Consequences consequences(source, model);
    for (const Error& error : model.errors) {
        if (consequences.has(error) || missing.takes(error, findings)) continue;
        findings.push_back(finding_of(
            {source, model, error, consequences.host_text(), findings.size() < most_compared}));
    }
}

}  // namespace orvex::frontend
