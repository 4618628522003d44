#include "frontend/rules/host_text.h"

#include "frontend/base/bytes.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/host_lines.h"
#include "frontend/syntax/reading.h"
#include "notation/records.h"
#include "text/characters.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

namespace orvex::frontend {

namespace {

using std::string_view;

// Directives that add no names and no text, besides those that begin with ON or OFF.
constexpr string_view harmless[] = {"ABORT",  "COMMENT", "DOLLAR", "EJECT",     "EOLCOM",
                                    "ERROR",  "EXIT",    "GOTO",   "IF",        "INLINECOM",
                                    "LABEL",  "LINES",   "SET",    "SETGLOBAL", "SETLOCAL",
                                    "SINGLE", "STITLE",  "STOP",   "TITLE"};

template <typename Work>
void for_each_word(string_view text, const Work& work) {
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = at;
        while (end < text.size() && is_name_byte(text[end])) ++end;
        if (end > at && !is_digit(text[at])) work(text.substr(at, end - at));
        at = end + 1;
    }
}

// Does the line contain "%X%"?
bool has_macro(string_view line) {
    for (std::size_t at = line.find('%'); at < line.size(); at = line.find('%', at + 1)) {
        if (next_lexeme(line, at).kind == TokenKind::macro) return true;
    }
    return false;
}

class Reader {
  public:
    Reader(const Source& source, HostText& host) : source_(source), host_(host) {
        for (const ModelText& model : source.models) model_names_.add(model.name);
    }

    void read() {
        const Tree& tree = source_.tree;
        for (Index record = 0; record < line_count(tree); ++record) take(record);
        host_.is_whole = has_statements_ && !may_lack_;
        for (Index word = 0; word < host_.words.size(); ++word)
            host_.list.push_back(host_.words.text(word));
        host_.model_count = model_count(tree);
        if (host_.model_count < 2) return;
        for (Index model = 0; model < model_count(tree); ++model) take_model(model);
    }

  private:
    void take(Index record) {
        const RecordKind kind = source_.tree.records[record].kind;
        if (kind == RecordKind::model || kind == RecordKind::end) in_comment_ = false;
        if (kind != RecordKind::outside) return;
        const std::string_view line = text_of(source_.bytes, line_range(source_.tree, record));
        switch (host_line(line)) {
        case HostLine::blank:
        case HostLine::remark: return;
        case HostLine::comment_begins: in_comment_ = true; return;
        case HostLine::comment_ends: in_comment_ = false; return;
        case HostLine::directive: return take_directive(capitals(line));
        case HostLine::text: return take_text(capitals(line));
        }
    }

    void take_text(string_view line) {
        if (in_comment_) return;
        has_statements_ = true;
        take_words(line);
    }

    void take_words(string_view line) {
        if (has_macro(line)) may_lack_ = true;
        for_each_word(line, [this](string_view word) { host_.words.add(word); });
    }

    void take_directive(string_view line) {
        const string_view text = line.substr(line.find(notation::keyword_mark) + 1);
        const string_view word = text.substr(0, text.find_first_of(" \t\r"));
        const bool is_read = !in_comment_ && !is_harmless(word, trimmed(text.substr(word.size())));
        may_lack_ = may_lack_ || is_read;
    }

    bool is_harmless(string_view word, string_view rest) const {
        if (word == include_directive) return is_output(rest);
        if (rest.find_first_of("$%") != string_view::npos) return false;
        return word.starts_with("ON") || word.starts_with("OFF") ||
               std::find(std::begin(harmless), std::end(harmless), word) != std::end(harmless);
    }

    // Is the file one of the two outputs for a model, in any folder?
    bool is_output(string_view path) const {
        if (path.size() >= 2 && path.front() == path.back() &&
            (path.front() == '"' || path.front() == '\''))
            path = path.substr(1, path.size() - 2);
        path = path.substr(path.find_last_of("/\\") + 1);
        const std::size_t dot = path.rfind('.');
        if (dot == string_view::npos) return false;
        const string_view extension = path.substr(dot);
        if (extension != ".GEN" && extension != ".HDR") return false;
        return model_names_.find(path.substr(0, dot)) != no_index;
    }

    void take_model(Index model) {
        const Tree& tree = source_.tree;
        const Index end = tree.models[model].end;
        for (Index record = tree.models[model].record + 1; record < end; ++record) {
            if (tree.records[record].kind == RecordKind::comment) continue;
            const std::string text = capitals(text_of(source_.bytes, record_range(tree, record)));
            for_each_word(text, [&](string_view word) { note(word, model); });
        }
    }

    void note(string_view word, Index model) {
        const Index number = host_.model_words.add(word);
        if (number == host_.only_model.size()) host_.only_model.push_back(model);
        if (host_.only_model[number] != model) host_.only_model[number] = no_index;
    }

    const Source& source_;
    HostText& host_;
    NameTable model_names_;
    bool in_comment_ = false;
    bool has_statements_ = false;
    bool may_lack_ = false;  // names may come from elsewhere
};

}  // namespace

HostText read_host_text(const Source& source) {
    HostText host;
    Reader(source, host).read();
    return host;
}

bool is_in_other_model(const HostText& host, Index model, const std::string& word) {
    const Index number = host.model_words.find(word);
    return number != no_index && host.only_model[number] != model;
}

}  // namespace orvex::frontend
