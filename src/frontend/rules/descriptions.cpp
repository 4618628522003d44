#include "frontend/rules/descriptions.h"

#include "frontend/rules/checks.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/fields.h"
#include "frontend/syntax/reading.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <unordered_set>

namespace orvex::frontend {

namespace {

// Words that a description may have, but that are not plausible names.
constexpr std::string_view little_words[] = {"AND", "BY",  "FOR", "FROM", "IN",  "OF",
                                             "ON",  "PER", "THE", "TO",   "WITH"};

bool is_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool is_small(char c) { return c >= 'a' && c <= 'z'; }

// A name or a word in a line of declarations.
struct Word {
    std::string_view text;
    Range range;
    bool is_plain = false;
    bool is_loose = false;   // nothing uses it, or it is also declared elsewhere
    bool is_unused = false;  // nothing uses it
};

class Reader {
  public:
    Reader(const Source& source, const Model& model)
        : source_(source), model_(model), is_used_(model.symbols.size()) {
        for (const Use& use : model.uses) {
            if (use.role != Role::declared) is_used_[use.symbol] = true;
        }
        for (const Field& field : model.repeated) repeated_.insert(field.reference.symbol);
        for (const Error& error : model.errors) errors_.insert(error.record);
    }

    std::vector<Description> read() {
        for (const Block& block : model_.blocks) {
            if (is_opened_by(block, notation::Opens::declaration)) read_block(block.record + 1);
        }
        return std::move(found_);
    }

  private:
    void read_block(Index record) {
        const Tree& tree = source_.tree;
        const Index end = tree.models[model_.node].end;
        for (; record < end && tree.records[record].kind != RecordKind::opening; ++record) {
            if (tree.records[record].kind == RecordKind::names) read_line(record);
        }
    }

    void read_line(Index record) {
        constexpr Index fewest = 3;
        const Index first = source_.tree.records[record].field;
        const Index end = source_.tree.records[record + 1].field;
        if (end - first < fewest) return;
        words_.clear();
        for (Index node = first; node < end; ++node) words_.push_back(word_of(record, node));
        if (!words_.front().is_plain) return;
        const auto is_name = [](const Word& word) { return !word.is_loose; };
        const auto last = std::find_if(words_.rbegin(), words_.rend() - 1, is_name);
        const std::span<const Word> loose(last.base(), words_.end());
        const bool has_error = errors_.contains(record);
        if (!is_description(loose)) return;
        found_.push_back({(&loose.front() - 1)->range,
                          {loose.front().range.begin, loose.back().range.end},
                          has_little_word(loose),
                          has_error});
    }

    Word word_of(Index record, Index node) const {
        const FieldParts parts = parts_of(source_.tree, record, node);
        Word word;
        word.range = range_of(source_.tree, parts.first, parts.end);
        word.text = text_of(source_.bytes, word.range);
        const std::string_view root = text_of(source_.bytes, parts.root);
        word.is_plain = is_plain_name(root);
        if (!word.is_plain) {
            word.is_loose = mentions_nothing(word.text);
            return word;
        }
        const Index symbol = model_.names.find(capitals(root));
        if (symbol == no_index) return word;
        word.is_unused = !is_used_[symbol];
        word.is_loose = word.is_unused || repeated_.contains(symbol);
        return word;
    }

    // Does a text that is not a name, such as "price," or "(tons)", contain no name that the model
    // uses?
    bool mentions_nothing(std::string_view text) const {
        for (std::size_t at = 0; at < text.size();) {
            const Lexeme next = next_lexeme(text, at);
            const bool is_word = next.kind == TokenKind::word;
            const Index symbol =
                is_word ? model_.names.find(capitals(text.substr(at, next.end - at))) : no_index;
            if (symbol != no_index && is_used_[symbol]) return false;
            at = next.end;
        }
        return true;
    }

    static bool has_little_word(std::span<const Word> words) {
        return std::any_of(words.begin(), words.end(),
                           [](const Word& word) { return is_little_word(word.text); });
    }

    // Are the words at the end of the line a text, rather than names that nothing uses?
    bool is_description(std::span<const Word> words) const {
        const bool has_unused = std::any_of(words.begin(), words.end(),
                                            [](const Word& word) { return word.is_unused; });
        if (words.size() < 2 || !has_unused) return false;
        return has_little_word(words) || differ_in_case(words) || are_long(words);
    }

    // Are there lower-case words after names in capitals?
    bool differ_in_case(std::span<const Word> words) const {
        const auto has_small = [](const Word& word) {
            return std::any_of(word.text.begin(), word.text.end(), is_small);
        };
        const std::size_t names = words_.size() - words.size();
        return std::none_of(words_.begin(), words_.begin() + static_cast<std::ptrdiff_t>(names),
                            has_small) &&
               std::all_of(words.begin(), words.end(), has_small);
    }

    // Are there at least three words, each of at least three letters and nothing else?
    static bool are_long(std::span<const Word> words) {
        constexpr std::size_t fewest = 3;
        constexpr std::size_t shortest = 3;
        return words.size() >= fewest &&
               std::all_of(words.begin(), words.end(), [](const Word& word) {
                   return word.text.size() >= shortest &&
                          std::all_of(word.text.begin(), word.text.end(), is_letter);
               });
    }

    const Source& source_;
    const Model& model_;
    std::vector<bool> is_used_;           // for each symbol: outside declarations
    std::unordered_set<Index> repeated_;  // symbols that are declared more than once
    std::unordered_set<Index> errors_;    // records
    std::vector<Word> words_;             // of the current line
    std::vector<Description> found_;
};

}  // namespace

bool is_little_word(std::string_view word) {
    return std::find(std::begin(little_words), std::end(little_words), capitals(word)) !=
           std::end(little_words);
}

std::vector<Description> read_descriptions(const Source& source, const Model& model) {
    return Reader(source, model).read();
}

void check_description_unmarked(const Subject& subject, Findings& findings) {
    for (const Description& description : subject.facts->descriptions) {
        if (description.has_error) continue;
        Finding& finding = warn(subject, findings, description.words,
                                {{"name", as_read(subject, description.name)}});
        const Offset begin = description.words.begin;
        set_fix(finding, description.is_sure ? Confidence::certain : Confidence::maybe,
                {inserting(begin, "! ")});
    }
}

}  // namespace orvex::frontend
