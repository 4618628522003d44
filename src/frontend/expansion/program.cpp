#include "frontend/expansion/program.h"

#include "frontend/base/bytes.h"
#include "frontend/expansion/expression_reader.h"
#include "frontend/expansion/words.h"
#include "notation/keywords.h"
#include "notation/records.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <utility>

namespace orvex::frontend {

namespace {

using std::string_view;
using Kind = Statement::Kind;
using Part = Statement::Part;

// More levels than the indentation of a line can show.
constexpr int most_levels = 1000;

class Reader {
  public:
    Reader(GeneratorProgram& program, std::vector<Flaw>& flaws)
        : program_(program),
          flaws_(flaws),
          words_(program.text, words_of(program.text)),
          expressions_(words_, program) {}

    void read() {
        read_statements();
        while (!words_.at_end()) {
            refuse_line();
            read_statements();
        }
    }

  private:
    // Reads statements up to the ")" that closes the level they are in.
    void read_statements() {
        while (!words_.at_end() && !words_.is_symbol(")")) read_statement();
    }

    void read_statement() {
        if (words_.is_symbol(";")) {
            words_.advance();
        } else if (words_.is_name("PUT")) {
            read_put();
        } else if (words_.is_name("LOOP") || words_.is_name("IF")) {
            read_level();
        } else {
            refuse_line();
        }
    }

    // Refuses a line that cannot be understood. The statements in any level that it opens are still
    // read.
    void refuse_line() {
        try {
            expressions_.refuse();
        } catch (const Flaw& flaw) {
            flaws_.push_back(flaw);
        }
        words_.skip_line();
    }

    // Returns whether the statement was understood.
    template <typename Step>
    bool attempt(const Step& step) {
        try {
            step();
            return true;
        } catch (const Flaw& flaw) {
            flaws_.push_back(flaw);
            return false;
        }
    }

    void read_level() {
        const auto index = static_cast<Index>(program_.statements.size());
        const std::size_t loops = expressions_.loops();
        Statement level;
        level_line_ = words_.word().line;
        const bool is_clear = attempt([&] { read_head(level); });
        program_.statements.push_back(level);
        if (!is_clear) expressions_.recover(loops);
        const bool is_over = !is_clear && words_.skip_line();
        if (!is_over) read_body();
        expressions_.recover(loops);
        program_.statements[index].end = static_cast<Index>(program_.statements.size());
    }

    void read_head(Statement& level) {
        level.kind = words_.is_name("LOOP") ? Kind::loop : Kind::condition;
        words_.advance();
        expressions_.expect("(");
        if (level.kind == Kind::loop) {
            read_loop(level);
        } else {
            level.condition = expressions_.read();
        }
        expressions_.expect(",");
    }

    void read_loop(Statement& level) {
        expressions_.open_loops(level.first, level.count);
        if (!words_.is_symbol("$")) return;
        words_.advance();
        level.condition = expressions_.read();
    }

    void read_body() {
        if (++depth_ > most_levels) {
            refuse_line();
        } else {
            read_statements();
            if (words_.at_end()) refuse_line();
            if (words_.is_symbol(")")) words_.advance();
        }
        --depth_;
    }

    // A statement of the translator is on one line, and the last one of an option has no ";".
    void read_put() {
        Statement put;
        put.first = static_cast<Index>(program_.items.size());
        const Index line = words_.word().line;
        if (!attempt([&] { read_items(line); })) {
            words_.skip_line();
            if (level_line_ == line) words_.return_to_close();
        }
        put.count = static_cast<Index>(program_.items.size()) - put.first;
        classify(put);
        put.end = static_cast<Index>(program_.statements.size()) + 1;
        program_.statements.push_back(put);
    }

    void read_items(Index line) {
        words_.advance();
        skip_file();
        while (words_.word().line == line && !words_.at_end() && !words_.is_symbol(";") &&
               !words_.is_symbol(")")) {
            if (words_.is_symbol(",")) {
                words_.advance();
            } else {
                program_.items.push_back(read_item());
            }
        }
    }

    // Skips the file that the first statement prints to.
    void skip_file() {
        const string_view next = text_of(program_.text, words_.following().range);
        if (words_.is_name() && next == ",") words_.advance();
    }

    Item read_item() {
        Item item;
        const Range range = words_.word().range;
        if (words_.is_symbol("/")) {
            item.kind = Item::Kind::line_end;
            words_.advance();
        } else if (words_.word().kind == TokenKind::string && words_.text().starts_with('\'')) {
            if (range.end - range.begin < 2 || !words_.text().ends_with('\''))
                expressions_.refuse();
            item.text = {range.begin + 1, range.end - 1};
            add_element(item.text);
            words_.advance();
        } else if (words_.is_name() && words_.following().kind == TokenKind::attribute) {
            read_element(item);
        } else {
            item.kind = Item::Kind::value;
            item.node = expressions_.read_value();
        }
        return item;
    }

    // A quoted element is printed with the point before it.
    void add_element(Range text) {
        const string_view printed = text_of(program_.text, text);
        if (printed.size() < 2 || printed.front() != '.') return;
        const Index name = program_.names.add(without_blanks_around(printed.substr(1)));
        program_.uses.resize(program_.names.size());
        program_.elements.push_back({name, {text.begin + 1, text.end}});
    }

    // S.TL, or S.TE(S+1).
    void read_element(Item& item) {
        const Offset begin = words_.word().range.begin;
        const Range attribute = words_.following().range;
        const bool is_shifted = text_of(program_.text, attribute) == ".TE";
        if (!is_shifted && text_of(program_.text, attribute) != ".TL")
            expressions_.refuse("", {begin, attribute.end});
        item.kind = Item::Kind::element;
        item.element.kind = ElementArgument::Kind::looped;
        item.element.loop = expressions_.read_looped();
        words_.advance();
        if (!is_shifted) return;
        const Index loop = item.element.loop;
        expressions_.expect("(");
        item.element = expressions_.read_shifted();
        if (item.element.loop != loop) expressions_.refuse("", {begin, words_.end_before()});
    }

    string_view text_of_item(Index item) const {
        return text_of(program_.text, program_.items[item].text);
    }

    // A text that begins with a keyword begins a block, or is an option.
    void classify(Statement& put) {
        const Index end = put.first + put.count;
        bool begins_line = false;
        Index item = put.first;
        for (; item < end && program_.items[item].kind == Item::Kind::line_end; ++item)
            begins_line = true;
        if (item < end && program_.items[item].kind == Item::Kind::text &&
            !program_.items[item].text.empty()) {
            const string_view text = text_of_item(item);
            if (text.front() == notation::keyword_mark) {
                begin_block(put, item);
            } else if (begins_line) {
                put.part = text.front() == notation::continuation_mark ? Part::field : Part::entry;
            }
        }
        put.block = block_;
    }

    void begin_block(Statement& put, Index item) {
        string_view text = text_of_item(item);
        const std::size_t colon = std::min(text.find(':'), text.size());
        const notation::Keyword* const keyword = notation::find_keyword(text.substr(1, colon - 1));
        const bool is_block = keyword != nullptr && keyword->opens != notation::Opens::option &&
                              text.substr(0, colon + 1) != notation::model_keyword;
        block_ = no_index;
        if (!is_block) return;
        if (text.ends_with(':')) text.remove_suffix(1);
        put.part = Part::head;
        block_ = static_cast<Index>(program_.blocks.size());
        program_.blocks.push_back({std::string(text), program_.items[item].text});
    }

    GeneratorProgram& program_;
    std::vector<Flaw>& flaws_;
    Words words_;
    ExpressionReader expressions_;
    Index block_ = no_index;
    Index level_line_ = no_index;  // where the last loop or condition begins
    int depth_ = 0;
};

}  // namespace

GeneratorProgram read_program(std::string_view generator, std::vector<Flaw>& flaws) {
    GeneratorProgram program;
    program.text = generator;
    Reader(program, flaws).read();
    return program;
}

int listed_line(std::string_view generator, Offset place) {
    const std::size_t before =
        place == 0 ? std::string_view::npos : generator.rfind('\n', place - std::size_t{1});
    std::string_view line = generator.substr(before == std::string_view::npos ? 0 : before + 1);
    if (!line.starts_with('{')) return 0;
    line.remove_prefix(std::min(line.find_first_not_of("{ "), line.size()));
    int number = 0;
    const auto [stop, error] = std::from_chars(line.data(), line.data() + line.size(), number);
    return error == std::errc() ? number : 0;
}

}  // namespace orvex::frontend
