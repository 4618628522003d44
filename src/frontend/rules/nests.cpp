#include "frontend/base/spelling.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/findings/wording.h"
#include "frontend/rules/checks.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/found.h"
#include "frontend/rules/rows.h"
#include "frontend/rules/warn.h"

#include <algorithm>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace orvex::frontend {

namespace {

// The nests that every block has: of all inputs, and of all outputs.
bool is_root(std::string_view name) { return name == "S" || name == "T"; }

bool is_of_elements(std::string_view name) {
    return name.find(notation::element_label) != std::string_view::npos;
}

// A nest of an opening record: "VA" and "VA(S)" both open VA; the latter also gives its parent.
struct Opened {
    const Field* field;
    std::string name;
    std::string parent;
    Range parent_place;
    bool is_used = false;
};

// A label in entries for a nest that the opening record does not define.
struct Missing {
    std::string name;
    std::vector<Range> places;
};

// The opening record of a block with its entries, and their nests.
class Nests {
  public:
    Nests(const Subject& subject, std::span<const Row> rows)
        : subject_(subject), all_(subject.facts->rows), rows_(rows) {
        for (const Field* const field : fields_of(all_, rows.front())) open(*field);
        for (Opened& nest : opened_) note_use(nest.parent);
        for (const Row& row : rows_.subspan(1)) {
            for (const Field* const field : fields_of(all_, row)) note_use(label_of(*field));
        }
        for (const Row& row : rows_.subspan(1)) {
            for (const Field* const field : own_fields_of(all_, row)) note_entry(*field);
        }
        for (const Opened& nest : opened_) collect(nest);
    }

    const std::vector<Opened>& opened() const { return opened_; }
    const std::vector<Missing>& missing() const { return missing_; }
    bool has(const std::string& name) const { return is_root(name) || numbers_.contains(name); }
    bool opens(const std::string& name) const { return numbers_.contains(name); }

    // Do its entries or other nests name a nest that is missing?
    bool lacks_any() const {
        return !missing_.empty() ||
               std::any_of(opened_.begin(), opened_.end(), [this](const Opened& nest) {
                   return !nest.parent.empty() && !has(nest.parent);
               });
    }

    // The nests that nothing is in.
    std::span<const Opened* const> unused() const { return unused_; }

    // The first one with a label of elements, or null.
    const Opened* of_elements() const { return of_elements_; }

    // The nest that a missing one may mean: the one with the most similar name, or else the only
    // one that nothing is in.
    std::string meant(const std::string& name) const {
        constexpr std::size_t most_compared = 100;
        if (opened_.size() > most_compared) return {};
        std::vector<std::string> names;
        for (const Opened& nest : opened_) {
            if (!is_root(nest.name) && nest.name != name) names.push_back(nest.name);
        }
        if (std::string near = nearest(name, names); !near.empty()) return near;
        return unused_.size() == 1 && unused_.front()->name != name ? unused_.front()->name : "";
    }

    // A label of elements is printed as names that plain labels may also have: is there an unused
    // nest of the other sort?
    bool may_be_elements(const Missing& nest) const {
        return is_of_elements(nest.name) ? has_unused_plain_ : has_unused_elements_;
    }

    // Can all rows be read?
    bool is_clear() const {
        return std::none_of(rows_.begin(), rows_.end(), [](const Row& row) {
            const bool is_refused = row.entry != nullptr && row.entry->refused;
            return row.unclear || row.stray || is_refused || head_of(row).faulty;
        });
    }

    bool has_finding(const FoundLines& found) const {
        return std::any_of(rows_.begin(), rows_.end(),
                           [&](const Row& row) { return found.touch(all_, row); });
    }

  private:
    std::string label_of(const Field& field) const { return as_read(subject_, field.label); }

    void open(const Field& field) {
        const std::string label = label_of(field);
        const std::size_t mark = std::min(label.find('('), label.size());
        const std::size_t close = std::min(label.find(')', mark), label.size());
        Opened nest{&field, label.substr(0, mark), {}, {}};
        if (mark < close) {
            nest.parent = label.substr(mark + 1, close - mark - 1);
            nest.parent_place = {field.label.begin + static_cast<Offset>(mark) + 1,
                                 field.label.begin + static_cast<Offset>(close)};
        }
        if (numbers_.emplace(nest.name, opened_.size()).second) opened_.push_back(nest);
    }

    void note_use(const std::string& name) {
        const auto nest = numbers_.find(name);
        if (nest != numbers_.end()) opened_[nest->second].is_used = true;
    }

    void note_entry(const Field& field) {
        const bool has_meaning = field.row != nullptr && field.row->full;
        if (has_meaning || !field.text.empty() || field.faulty) return;
        if (has_joined_plus(subject_.source, field) || has_lookalike(subject_.source, field))
            return;
        const std::string name = label_of(field);
        if (numbers_.contains(name)) return;
        const auto [place, is_new] = missing_numbers_.emplace(name, missing_.size());
        if (is_new) missing_.push_back({name, {}});
        missing_[place->second].places.push_back(label_place(subject_, field));
    }

    void collect(const Opened& nest) {
        const bool is_elements = is_of_elements(nest.name);
        if (is_elements && of_elements_ == nullptr) of_elements_ = &nest;
        if (nest.is_used || nest.field->faulty || is_root(nest.name)) return;
        unused_.push_back(&nest);
        (is_elements ? has_unused_elements_ : has_unused_plain_) = true;
    }

    const Subject& subject_;
    const Rows& all_;
    std::span<const Row> rows_;
    std::vector<Opened> opened_;
    std::unordered_map<std::string, std::size_t> numbers_;
    std::vector<Missing> missing_;
    std::unordered_map<std::string, std::size_t> missing_numbers_;
    std::vector<const Opened*> unused_;
    const Opened* of_elements_ = nullptr;
    bool has_unused_plain_ = false;
    bool has_unused_elements_ = false;
};

// Calls work(nests) for each production and demand block whose opening record can be read.
template <typename Work>
void for_each_block(const Subject& subject, const Work& work) {
    const std::vector<Row>& rows = subject.facts->rows.rows;
    for (std::size_t first = 0; first < rows.size();) {
        std::size_t end = first + 1;
        while (end < rows.size() && rows[end].entry != nullptr) ++end;
        if (!rows[first].unclear) work(Nests(subject, std::span(rows).subspan(first, end - first)));
        first = end;
    }
}

void add_places(const Subject& subject, const Missing& nest, Finding& finding) {
    std::vector<int> lines;
    for (std::size_t i = 1; i < nest.places.size(); ++i)
        lines.push_back(line_of(subject.source.tree, nest.places[i].begin));
    if (lines.empty()) return;
    finding.remarks.insert(finding.remarks.begin(),
                           {Severity::note, "also used in " + line_list(lines), {}});
}

// Replaces a name by another one in all places; as a label, it is followed by a colon.
void suggest(const Subject& subject, Finding& finding, const std::string& meant,
             const std::vector<Range>& places, Offset colon) {
    if (meant.empty()) return;
    set_help(finding, "did you mean " + back_quoted(meant) + "?");
    std::vector<Edit> edits;
    for (const Range place : places) {
        const Range name = {place.begin, place.end - colon};
        edits.push_back(replacing(name, cased_like(text_in(subject, name), meant)));
    }
    set_fix(finding, Confidence::maybe, std::move(edits));
}

void warn_of_missing(const Subject& subject, const Nests& nests, const Missing& nest,
                     Findings& findings) {
    if (nests.may_be_elements(nest)) return;
    if (is_of_elements(nest.name) && nests.of_elements() != nullptr) return;
    Finding& finding = warn(subject, findings, nest.places.front(), {{"label", nest.name}});
    add_places(subject, nest, finding);
    suggest(subject, finding, nests.meant(nest.name), nest.places, 1);
}

void warn_of_parent(const Subject& subject, const Nests& nests, const Opened& nest,
                    Findings& findings) {
    if (nest.parent.empty() || nests.has(nest.parent)) return;
    Finding& finding = warn(subject, findings, nest.parent_place,
                            {{"label", nest.parent}, {"name", nest.name}}, "parent");
    suggest(subject, finding, nests.meant(nest.parent), {nest.parent_place}, 0);
}

// Is it a single letter, or the beginning of a word for the elasticity of a block, such as ELAS?
bool may_mean_elasticity(std::string_view label) {
    constexpr std::string_view words[] = {"ELASTICITY", "ESUB", "SIGMA", "SUBSTITUTION"};
    constexpr std::size_t least = 3;
    return label.size() == 1 ||
           (label.size() >= least &&
            std::any_of(std::begin(words), std::end(words),
                        [label](std::string_view word) { return word.starts_with(label); }));
}

// Is it the elasticity of the block with a label other than `S:`?
bool is_misspelt_root(const Nests& nests) {
    const auto unused = nests.unused();
    return unused.size() == 1 && may_mean_elasticity(unused.front()->name) && !nests.opens("S");
}

void warn_of_unused(const Subject& subject, const Nests& nests, Findings& findings) {
    for (const Opened* const nest : nests.unused()) {
        const bool is_misspelt = is_misspelt_root(nests);
        Finding& finding = warn(subject, findings, label_place(subject, *nest->field),
                                {{"name", nest->name}}, is_misspelt ? "mistyped" : "");
        if (!is_misspelt) continue;
        const Range label = nest->field->label;
        set_fix(finding, Confidence::maybe,
                {replacing(label, cased_like(text_in(subject, label), "S"))});
    }
}

}  // namespace

// An entry belongs to a nest only by its label; the opening record must define the nest and its
// parent.
void check_nest_undeclared(const Subject& subject, Findings& findings) {
    for_each_block(subject, [&](const Nests& nests) {
        for (const Opened& nest : nests.opened()) warn_of_parent(subject, nests, nest, findings);
        for (const Missing& nest : nests.missing()) warn_of_missing(subject, nests, nest, findings);
    });
}

// The labels of two sets may have the same elements.
void check_nest_set(const Subject& subject, Findings& findings) {
    for_each_block(subject, [&](const Nests& nests) {
        const Opened* const other = nests.of_elements();
        for (const Missing& nest : nests.missing()) {
            if (other == nullptr || !is_of_elements(nest.name)) continue;
            Finding& finding = warn(subject, findings, nest.places.front(),
                                    {{"label", nest.name}, {"other", other->name}});
            add_places(subject, nest, finding);
        }
    });
}

void check_nest_unused(const Subject& subject, Findings& findings) {
    const FoundLines found(subject, findings);
    for_each_block(subject, [&](const Nests& nests) {
        if (nests.lacks_any() || !nests.is_clear() || nests.has_finding(found)) return;
        warn_of_unused(subject, nests, findings);
    });
}

}  // namespace orvex::frontend
