#include "frontend/rules/allow.h"

#include "frontend/base/bytes.h"
#include "frontend/base/spelling.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/messages.h"
#include "frontend/findings/place.h"
#include "frontend/findings/wording.h"
#include "frontend/rules/checks.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/rule.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/allowance_mark.h"
#include "notation/records.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <utility>

namespace orvex::frontend {

namespace {

constexpr std::string_view for_next = "allow";
constexpr std::string_view for_file = "allow-file";
constexpr std::string_view blanks = " \t";

// Comparing each wrong code with all others would take too long if there are many.
constexpr std::size_t most_compared = 1000;

// The findings about these comments themselves.
constexpr std::string_view unused_code = "allow-unused";

// Takes the parts of a line in order.
class Words {
  public:
    Words(std::string_view line, Offset begin) : line_(line), begin_(begin) {}

    // The next word, up to one of the bytes in `ends`; empty at the end of the line.
    Range take(std::string_view ends) {
        skip_blanks();
        const std::size_t start = at_;
        at_ = std::min(line_.find_first_of(ends, at_), line_.size());
        return {begin_ + static_cast<Offset>(start), begin_ + static_cast<Offset>(at_)};
    }

    // Takes a text, in any case. False if it is not there.
    bool take_text(std::string_view text) {
        skip_blanks();
        const bool is_there = in_small_letters(line_.substr(at_, text.size())) == text;
        if (is_there) at_ += text.size();
        return is_there;
    }

  private:
    void skip_blanks() { at_ = std::min(line_.find_first_not_of(blanks, at_), line_.size()); }

    std::string_view line_;
    Offset begin_;
    std::size_t at_ = 1;  // after the "*"
};

bool is_comment(const Source& source, Index record) {
    const std::string_view line = line_text(source, line_of_record(record));
    return line.starts_with(notation::comment_mark);
}

// Reads the comments from the end of the file to its start, so that what follows them is known.
class Reader {
  public:
    explicit Reader(const Source& source)
        : source_(source), next_(line_count(source.tree)), end_(next_), block_end_(next_) {}

    std::vector<Allowance> read() {
        for (Index record = line_count(source_.tree); record-- > 0;) {
            if (is_comment(source_, record)) {
                take_comment(record);
            } else if (!trimmed(line_text(source_, line_of_record(record))).empty()) {
                pass(record);
            }
        }
        std::reverse(found_.begin(), found_.end());
        return std::move(found_);
    }

  private:
    RecordKind kind(Index record) const { return source_.tree.records[record].kind; }

    void pass(Index record) {
        const RecordKind own = kind(record);
        const RecordKind after = kind(next_);
        const bool is_body = own == RecordKind::body && after == RecordKind::body;
        const bool goes_on = is_body || after == RecordKind::continuation;
        end_ = own == RecordKind::opening ? block_end_ : goes_on ? end_ : record + 1;
        next_ = record;
        const bool divides = own == RecordKind::opening || own == RecordKind::model ||
                             own == RecordKind::end || own == RecordKind::outside;
        if (divides) block_end_ = record;
    }

    void take_comment(Index record) {
        Words words(line_text(source_, line_of_record(record)),
                    line_begin(source_, line_of_record(record)));
        if (!words.take_text(allowance_mark)) return;
        const Range word = words.take(blanks);
        const std::string what = in_small_letters(text_of(source_.bytes, word));
        if (what != for_next && what != for_file) return;
        Allowance allowance{{}, word, record, Reach::file, 0, line_count(source_.tree)};
        if (what == for_next) {
            const bool opens = kind(next_) == RecordKind::opening;
            allowance.reach = opens ? Reach::block : Reach::record;
            allowance.first = next_;
            allowance.end = end_;
        }
        take_codes(words, std::move(allowance));
    }

    void take_codes(Words& words, Allowance allowance) {
        const std::size_t before = found_.size();
        do {
            const Range place = words.take(" \t,:;");
            if (place.empty()) break;
            allowance.place = place;
            allowance.code = in_small_letters(text_of(source_.bytes, place));
            found_.push_back(allowance);
        } while (words.take_text(","));
        if (found_.size() == before) found_.push_back(std::move(allowance));
        std::reverse(found_.begin() + static_cast<std::ptrdiff_t>(before), found_.end());
    }

    const Source& source_;
    Index next_;       // the next record that is neither blank nor a comment
    Index end_;        // of the record or block that it begins
    Index block_end_;  // where the block of a record ends
    std::vector<Allowance> found_;
};

std::vector<std::string> allowable_codes() {
    std::vector<std::string> codes;
    for (const Rule& rule : rules())
        if (allowable_rule(rule.code) != nullptr) codes.emplace_back(rule.code);
    return codes;
}

// The comments that allow the findings of one code: for each kind of reach, in the order of the
// file.
using Allowing = std::array<std::vector<Allowance*>, 3>;

Allowance* find_allowing(const Allowing& allowing, int line) {
    for (const std::vector<Allowance*>& list : allowing) {
        const bool has_line = line > 0;
        if (!has_line && &list != &allowing.back()) continue;
        const Index record = has_line ? static_cast<Index>(line) - 1 : 0;
        // A comment that begins later reaches less far.
        const auto after =
            std::upper_bound(list.begin(), list.end(), record,
                             [](Index at, const Allowance* other) { return at < other->first; });
        if (after == list.begin()) continue;
        Allowance* const found = *std::prev(after);
        if (!has_line || record < found->end) return found;
    }
    return nullptr;
}

// Removes the code with the comma next to it, or the whole comment if it is the only code.
Edit removal(const Source& source, const std::vector<Allowance>& allowances, std::size_t index) {
    const Allowance& own = allowances[index];
    const auto is_beside = [&](std::size_t other) {
        return other < allowances.size() && allowances[other].record == own.record;
    };
    if (is_beside(index + 1)) return removing({own.place.begin, allowances[index + 1].place.begin});
    if (index > 0 && is_beside(index - 1))
        return removing({allowances[index - 1].place.end, own.place.end});
    return removing(whole_line(source.tree, own.record));
}

// For each record, the first record of the entry or block that it continues.
std::vector<Index> heads(const Tree& tree) {
    std::vector<Index> heads;
    Index head = 0;
    Index opening = 0;
    for (Index record = 0; record < line_count(tree); ++record) {
        const RecordKind kind = tree.records[record].kind;
        if (kind == RecordKind::opening) opening = record;
        if (kind == RecordKind::body) {
            head = opening;
        } else if (kind != RecordKind::continuation && kind != RecordKind::comment &&
                   kind != RecordKind::blank) {
            head = record;
        }
        heads.push_back(head);
    }
    return heads;
}

bool is_to_allow(const Source& source, const Finding& finding) {
    if (finding.severity < Severity::warning || allowable_rule(finding.code) == nullptr)
        return false;
    return finding.span.line == 0 || !is_comment(source, static_cast<Index>(finding.span.line) - 1);
}

std::string comment(std::string_view what, const std::vector<std::string>& codes) {
    std::string text = "* ";
    text.append(allowance_mark).append(" ").append(what).append(" ");
    for (const std::string& code : codes)
        text.append(&code == codes.data() ? "" : ", ").append(code);
    return text + "\n";
}

}  // namespace

std::vector<Allowance> read_allowances(const Source& source) { return Reader(source).read(); }

const Rule* allowable_rule(std::string_view code) {
    const auto table = rules();
    const auto found = std::find_if(table.begin(), table.end(),
                                    [&](const Rule& rule) { return rule.code == code; });
    const bool is_allowable = found != table.end() && found->level != Severity::error &&
                              found->scope != Scope::data && code != unused_code;
    return is_allowable ? &*found : nullptr;
}

void remove_allowed(std::vector<Allowance>& allowances, std::vector<Finding>& findings) {
    std::map<std::string_view, Allowing> by_code;
    for (Allowance& allowance : allowances) {
        if (allowable_rule(allowance.code) != nullptr)
            by_code[allowance.code][static_cast<std::size_t>(allowance.reach)].push_back(
                &allowance);
    }
    if (by_code.empty()) return;
    std::erase_if(findings, [&](const Finding& finding) {
        const auto allowing = by_code.find(finding.code);
        if (finding.severity == Severity::error || allowing == by_code.end()) return false;
        Allowance* const found = find_allowing(allowing->second, finding.span.line);
        if (found != nullptr) found->is_used = true;
        return found != nullptr;
    });
}

void add_unused_allowances(const Source& source, const std::vector<Allowance>& allowances,
                           const std::function<bool(const Allowance&)>& is_judged,
                           std::vector<Finding>& findings) {
    for (std::size_t i = 0; i < allowances.size(); ++i) {
        const Allowance& allowance = allowances[i];
        const bool is_known = allowable_rule(allowance.code) != nullptr;
        if (allowance.is_used || !is_known || !is_judged(allowance)) continue;
        Finding& finding = findings.emplace_back(warning(
            std::string(unused_code), {{"code", allowance.code}}, span_of(source, allowance.place),
            allowance.reach == Reach::file ? "file" : ""));
        set_fix(finding, Confidence::certain, {removal(source, allowances, i)});
    }
}

AddedComments comments_for(const Source& source, const std::vector<Finding>& findings) {
    std::vector<std::string> of_file;
    std::map<Index, std::vector<std::string>> of_records;
    const std::vector<Index> head = heads(source.tree);
    AddedComments added;
    for (const Finding& finding : findings) {
        if (!is_to_allow(source, finding)) continue;
        ++added.findings;
        const int line = finding.span.line;
        std::vector<std::string>& codes =
            line == 0 ? of_file : of_records[head[static_cast<std::size_t>(line) - 1]];
        if (std::find(codes.begin(), codes.end(), finding.code) == codes.end())
            codes.push_back(finding.code);
    }
    Fix fix;
    if (!of_file.empty()) fix.edits.push_back(inserting(0, comment(for_file, of_file)));
    for (const auto& [record, codes] : of_records) {
        const Offset place = line_begin(source, line_of_record(record));
        const std::string text = comment(for_next, codes);
        if (place == 0 && !fix.edits.empty()) {
            fix.edits.back().text += text;
        } else {
            fix.edits.push_back(inserting(place, text));
        }
    }
    place_fix(source, fix);
    added.edits = std::move(fix.edits);
    return added;
}

// The rules about the codes in these comments.

void check_allow_unknown(const Subject& subject, Findings& findings) {
    const std::vector<std::string> known = allowable_codes();
    std::size_t compared = 0;
    for (const Allowance& allowance : read_allowances(subject.source)) {
        if (find_code(allowance.code) != nullptr) continue;
        const bool is_missing = allowance.code.empty();
        Finding& finding = warn(subject, findings, allowance.place, {{"code", allowance.code}},
                                is_missing ? "missing" : "");
        if (is_missing || ++compared > most_compared) continue;
        const std::string near = nearest(allowance.code, known);
        if (near.empty()) continue;
        set_help(finding, "did you mean " + back_quoted(near) + "?");
        set_fix(finding, Confidence::maybe, {replacing(allowance.place, near)});
    }
}

void check_allow_invalid(const Subject& subject, Findings& findings) {
    const std::vector<Allowance> allowances = read_allowances(subject.source);
    for (std::size_t i = 0; i < allowances.size(); ++i) {
        const Allowance& allowance = allowances[i];
        const bool is_known = find_code(allowance.code) != nullptr;
        if (!is_known || allowable_rule(allowance.code) != nullptr) continue;
        Finding& finding = warn(subject, findings, allowance.place, {{"code", allowance.code}});
        set_fix(finding, Confidence::certain, {removal(subject.source, allowances, i)});
    }
}

}  // namespace orvex::frontend
