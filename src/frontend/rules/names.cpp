#include "frontend/findings/failure.h"
#include "frontend/findings/wording.h"
#include "frontend/rules/checks.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/warn.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

constexpr std::size_t most_listed = 10;

// "A, B, C", or the first ones "and 5 more".
class List {
  public:
    void add(const std::string& item) {
        if (++count_ > most_listed) return;
        text_.append(count_ == 1 ? "" : ", ").append(item);
    }
    std::size_t count() const { return count_; }
    std::string text() const {
        if (count_ <= most_listed) return text_;
        return text_ + " and " + std::to_string(count_ - most_listed) + " more";
    }

  private:
    std::string text_;
    std::size_t count_ = 0;
};

// "line 12", "lines 12, 14": the lines of a name's uses except `line`; empty if there are none.
std::string lines_of_uses(const Model& model, const Undeclared& name, int line) {
    List list;
    int last = line;
    for (const Index use : name.uses) {
        const int at = line_of_record(model.uses[use].record);
        if (at == line || at == last) continue;
        last = at;
        list.add(std::to_string(at));
    }
    if (list.count() == 0) return {};
    return (list.count() == 1 ? "line " : "lines ") + list.text();
}

int line_of_first(const Model& model, const Undeclared& name) {
    return line_of_record(model.uses[name.first_use].record);
}

// The names of a kind that share one finding, at the first of them.
using Group = std::vector<const Undeclared*>;

void add_note(Finding& finding, std::size_t& place, std::string message) {
    finding.remarks.insert(finding.remarks.begin() + static_cast<std::ptrdiff_t>(place),
                           {Severity::note, std::move(message), {}});
    ++place;
}

std::string others_of(const Model& model, const Group& group) {
    List list;
    for (std::size_t i = 1; i < group.size(); ++i) {
        list.add(back_quoted(name_of(model, group[i]->symbol)) + " (" +
                 lines_of_uses(model, *group[i], 0) + ")");
    }
    return list.text();
}

// Replaces all uses of the name by the similar one.
void fix_spelling(const Subject& subject, const Undeclared& name, Finding& finding) {
    std::vector<Edit> edits;
    for (const Index use : name.uses) {
        const Range place = subject.model->uses[use].range;
        edits.push_back(replacing(place, cased_like(text_in(subject, place), name.near)));
    }
    std::sort(edits.begin(), edits.end(),
              [](const Edit& a, const Edit& b) { return a.begin < b.begin; });
    set_fix(finding, Confidence::maybe, std::move(edits));
}

void warn_of(const Subject& subject, const Group& group, Findings& findings) {
    const Model& model = *subject.model;
    const Undeclared& first = *group.front();
    Finding& finding = warn(
        subject, findings, model.uses[first.first_use].range,
        {{"kind", std::string(kind_name(first.kind))}, {"name", name_of(model, first.symbol)}});
    std::size_t place = 0;
    if (!first.near.empty()) {
        set_help(finding, "did you mean `" + first.near + "`?");
        fix_spelling(subject, first, finding);
    }
    const std::string lines = lines_of_uses(model, first, line_of_first(model, first));
    if (!lines.empty()) add_note(finding, place, "also used in " + lines);
    if (group.size() > 1) {
        add_note(finding, place, "not declared either: " + others_of(model, group));
    }
}

// Is the declaration the last name of its line, after others? Then it may be the only word of a
// description.
bool is_last_of_several(const Tree& tree, const Symbol& symbol) {
    const Index record = symbol.declared_record;
    const Index field = field_at(tree, symbol.declaration.begin);
    return field != tree.records[record].field && field + 1 == tree.records[record + 1].field;
}

// The variant of the message for a kind that has blocks of its own.
std::string_view block_of_kind(Kind kind) {
    if (kind == Kind::sector) return "sector";
    return kind == Kind::consumer ? "consumer" : "";
}

}  // namespace

// If the model declares no name of the kind, all of them have one cause. An invalid name has its
// own finding.
void check_name_undeclared(const Subject& subject, Findings& findings) {
    const Model& model = *subject.model;
    Group names;
    for (const Undeclared& name : subject.facts->undeclared) {
        if (!has(*subject.facts, name.symbol, is_odd)) names.push_back(&name);
    }
    std::stable_sort(names.begin(), names.end(), [&](const Undeclared* a, const Undeclared* b) {
        return model.uses[a->first_use].range.begin < model.uses[b->first_use].range.begin;
    });
    std::array<Group, kind_count> joined;
    for (const Undeclared* const name : names) {
        const auto kind = static_cast<std::size_t>(name->kind);
        if (subject.facts->is_declared[kind]) {
            warn_of(subject, {name}, findings);
        } else {
            joined[kind].push_back(name);
        }
    }
    for (const Group& group : joined) {
        if (!group.empty()) warn_of(subject, group, findings);
    }
}

// A fix replaces the name everywhere in the model.
void check_name_unknown(const Subject& subject, Findings& findings) {
    const Model& model = *subject.model;
    for (const UnknownName& name : subject.facts->unknown) {
        const Symbol& symbol = model.symbols[name.symbol];
        const std::string kind(symbol.kind == Kind::host ? "name" : kind_name(symbol.kind));
        const Use& first = model.uses[name.uses.front()];
        Finding& finding = warn(subject, findings, first.range,
                                {{"kind", kind}, {"name", name_of(model, name.symbol)}},
                                name.uses.size() == 1 ? "" : "several");
        Fix fix;
        std::vector<int> lines;  // of further uses
        for (const Index index : name.uses) {
            const Use& use = model.uses[index];
            fix.edits.push_back({use.range.begin, use.range.end, name.near});
            const int line = line_of_record(use.record);
            const int last = lines.empty() ? line_of_record(first.record) : lines.back();
            if (line != last) lines.push_back(line);
        }
        if (!lines.empty()) {
            finding.remarks.insert(finding.remarks.begin(),
                                   {Severity::note, "also used in " + line_list(lines), {}});
        }
        if (name.near.empty()) continue;
        set_help(finding, "did you mean `" + name.near + "`?");
        finding.fix = std::move(fix);
    }
}

void check_name_unused(const Subject& subject, Findings& findings) {
    for (const Index index : subject.facts->judged) {
        const Symbol& symbol = subject.model->symbols[index];
        if (is_used(*subject.model, symbol) || is_doubtful(*subject.facts, symbol.kind)) continue;
        const bool may_be_text = is_last_of_several(subject.source.tree, symbol);
        Finding& finding = warn(subject, findings, symbol.declaration,
                                {{"kind", std::string(kind_name(symbol.kind))},
                                 {"name", name_of(*subject.model, index)}},
                                may_be_text ? "text" : block_of_kind(symbol.kind));
        if (may_be_text)
            set_fix(finding, Confidence::maybe, {inserting(symbol.declaration.begin, "! ")});
    }
}

}  // namespace orvex::frontend
